// SPDX-License-Identifier: Apache-2.0

class Viewer {
  constructor(root) {
    this.root = root;
    this.mode = "swipe";
    this.divider = 0.5;
    this.shown = 0;
    this.scale = 1;
    this.isFitted = true;
    this.steps = [];
    this.labels = [root.dataset.first, root.dataset.second];
  }

  find(name) { return this.root.querySelector(name); }

  async start() {
    const texts = Array.from(this.root.querySelectorAll("script.frame"), (each) => each.textContent);
    this.pictures = await Promise.all(texts.map(readLevels));
    const [a, b] = this.pictures;
    this.isOneSize = a.width === b.width && a.height === b.height;
    this.width = Math.max(a.width, b.width);
    this.height = Math.max(a.height, b.height);
    if (this.isOneSize) {
      const values = new Int32Array(a.levels.length);
      for (let i = 0; i < values.length; ++i) values[i] = b.levels[i] - a.levels[i];
      this.steps.push({ width: a.width, height: a.height, values });
    }
    this.stage = this.find(".stage");
    this.panes = Array.from(this.root.querySelectorAll(".pane"));
    this.find(".live").hidden = false;
    this.root.classList.add("is-live");
    this.setUpModes();
    this.setUpWindow();
    this.setUpZoom();
    this.setUpPointer();
    this.setUpRest();
    this.setMode(this.isOneSize ? "swipe" : "side");
    new ResizeObserver(() => this.resize()).observe(this.stage);
    this.resize();
    this.root.dataset.ready = "yes";
  }

  setUpModes() {
    for (const radio of this.root.querySelectorAll(".mode input")) {
      radio.disabled = !this.isOneSize && radio.value !== "side";
      radio.addEventListener("change", () => this.setMode(radio.value));
    }
  }

  setMode(mode) {
    this.mode = mode;
    for (const each of ["swipe", "side", "blink", "difference"]) this.root.classList.toggle("in-" + each, each === mode);
    this.find(`.mode input[value="${mode}"]`).checked = true;
    this.panes[1].hidden = mode !== "side";
    clearInterval(this.timer);
    if (mode === "blink") {
      this.shown = 0;
      this.setBlinking(!matchMedia("(prefers-reduced-motion: reduce)").matches);
    }
    this.resize();
  }

  setBlinking(isOn) {
    clearInterval(this.timer);
    this.isBlinking = isOn;
    this.find(".pause").textContent = isOn ? "Pause" : "Go on";
    if (isOn) this.timer = setInterval(() => this.showOther(), 700);
  }

  showOther() {
    this.shown = 1 - this.shown;
    this.draw();
  }

  setUpWindow() {
    const top = Number(this.root.dataset.top);
    const preset = this.find(".preset");
    for (const text of this.root.dataset.windows.split(";")) {
      const [window, name] = text.split("=");
      preset.add(new Option(`${name} (${window.replace(":", " to ")})`, window));
    }
    preset.add(new Option("own", "own"));
    this.low = this.find(".low");
    this.high = this.find(".high");
    this.low.max = top - 1;
    this.high.max = top;
    preset.addEventListener("change", () => {
      if (preset.value !== "own") this.setWindow(...preset.value.split(":").map(Number));
    });
    this.low.addEventListener("input", () => {
      preset.value = "own";
      this.setWindow(Number(this.low.value), Math.max(Number(this.high.value), Number(this.low.value) + 1));
    });
    this.high.addEventListener("input", () => {
      preset.value = "own";
      this.setWindow(Math.min(Number(this.low.value), Number(this.high.value) - 1), Number(this.high.value));
    });
    this.setWindow(...preset.options[0].value.split(":").map(Number));
  }

  setWindow(low, high) {
    this.low.value = low;
    this.high.value = high;
    this.find(".low-shown").textContent = low;
    this.find(".high-shown").textContent = high;
    this.window = [low, high];
    this.isStale = true;
    this.draw();
  }

  setUpZoom() {
    const step = Math.SQRT2;
    this.find(".zoom-in").addEventListener("click", () => this.zoomTo(this.scale * step));
    this.find(".zoom-out").addEventListener("click", () => this.zoomTo(this.scale / step));
    this.find(".zoom-one").addEventListener("click", () => this.zoomTo(1));
    this.find(".zoom-fit").addEventListener("click", () => this.fit());
    this.stage.addEventListener("keydown", (event) => {
      const far = 60 / this.scale;
      const actions = {
        ArrowLeft: () => this.moveBy(-far, 0), ArrowRight: () => this.moveBy(far, 0),
        ArrowUp: () => this.moveBy(0, -far), ArrowDown: () => this.moveBy(0, far),
        "+": () => this.zoomTo(this.scale * step), "=": () => this.zoomTo(this.scale * step),
        "-": () => this.zoomTo(this.scale / step), 1: () => this.zoomTo(1), 0: () => this.fit(),
        " ": () => this.mode === "blink" && (this.setBlinking(false), this.showOther()),
      };
      if (!actions[event.key] || event.ctrlKey || event.altKey || event.metaKey) return;
      event.preventDefault();
      actions[event.key]();
    });
    this.stage.addEventListener("wheel", (event) => {
      if (!event.ctrlKey && document.activeElement !== this.stage) return;
      event.preventDefault();
      this.zoomTo(this.scale * Math.exp(-event.deltaY / 400), this.offsetOf(event));
    }, { passive: false });
  }

  // From the middle of the pane that the pointer is in, in pixels of the screen.
  offsetOf(event) {
    const pane = this.panes.find((each) => !each.hidden && each.contains(event.target)) || this.panes[0];
    const box = pane.getBoundingClientRect();
    const ratio = devicePixelRatio;
    return [(event.clientX - box.left - box.width / 2) * ratio, (event.clientY - box.top - box.height / 2) * ratio];
  }

  setUpPointer() {
    const pointers = new Map();
    let isDivider = false;
    this.stage.addEventListener("pointerdown", (event) => {
      if (event.button !== 0) return;
      this.stage.setPointerCapture(event.pointerId);
      pointers.set(event.pointerId, event);
      isDivider = event.target.classList.contains("handle");
      this.stage.classList.toggle("is-moving", !isDivider);
    });
    this.stage.addEventListener("pointermove", (event) => {
      this.readOut(event);
      const before = pointers.get(event.pointerId);
      if (!before) return;
      if (isDivider) {
        const box = this.panes[0].getBoundingClientRect();
        this.setDivider((event.clientX - box.left) / box.width);
      } else if (pointers.size === 2) {
        const other = [...pointers.values()].find((each) => each.pointerId !== event.pointerId);
        const far = (each) => Math.hypot(each.clientX - other.clientX, each.clientY - other.clientY);
        this.zoomTo(this.scale * far(event) / Math.max(1, far(before)));
      } else {
        const ratio = devicePixelRatio / this.scale;
        this.moveBy((before.clientX - event.clientX) * ratio, (before.clientY - event.clientY) * ratio);
      }
      pointers.set(event.pointerId, event);
    });
    for (const name of ["pointerup", "pointercancel"]) {
      this.stage.addEventListener(name, (event) => {
        pointers.delete(event.pointerId);
        this.stage.classList.remove("is-moving");
      });
    }
  }

  setUpRest() {
    const divider = this.find(".divider");
    divider.addEventListener("input", () => this.setDivider(Number(divider.value) / 100));
    this.find(".pause").addEventListener("click", () => this.setBlinking(!this.isBlinking));
    this.find(".switch").addEventListener("click", () => (this.setBlinking(false), this.showOther()));
    this.find(".gain").addEventListener("change", () => this.draw());
    for (const button of document.querySelectorAll(`button[data-viewer="${this.root.id}"]`)) {
      button.hidden = false;
      button.addEventListener("click", () => this.showPlace(Number(button.dataset.x), Number(button.dataset.y)));
    }
  }

  setDivider(share) {
    this.divider = Math.min(1, Math.max(0, share));
    this.find(".divider").value = 100 * this.divider;
    this.draw();
  }

  resize() {
    for (const pane of this.panes) {
      const canvas = pane.querySelector("canvas");
      canvas.width = Math.max(1, Math.round(pane.clientWidth * devicePixelRatio));
      canvas.height = Math.max(1, Math.round(pane.clientHeight * devicePixelRatio));
    }
    if (this.isFitted) this.fit();
    else this.draw();
  }

  fit() {
    const canvas = this.panes[0].querySelector("canvas");
    this.scale = Math.min(canvas.width / this.width, canvas.height / this.height);
    this.x = this.width / 2;
    this.y = this.height / 2;
    this.isFitted = true;
    this.draw();
  }

  // offset   of the place that stays where it is, from the middle of the pane
  zoomTo(scale, offset = [0, 0]) {
    const wanted = Math.min(64, Math.max(0.02, scale));
    this.x += offset[0] / this.scale - offset[0] / wanted;
    this.y += offset[1] / this.scale - offset[1] / wanted;
    this.scale = wanted;
    this.isFitted = false;
    this.moveBy(0, 0);
  }

  moveBy(x, y) {
    this.x = Math.min(this.width, Math.max(0, this.x + x));
    this.y = Math.min(this.height, Math.max(0, this.y + y));
    this.isFitted = this.isFitted && x === 0 && y === 0;
    this.draw();
  }

  showPlace(x, y) {
    this.isFitted = false;
    this.scale = 12;
    this.x = x + 0.5;
    this.y = y + 0.5;
    this.draw();
    this.tell(x, y);
    this.stage.focus({ preventScroll: true });
    this.stage.scrollIntoView({ block: "nearest" });
  }

  readOut(event) {
    const [x, y] = this.offsetOf(event);
    this.tell(Math.floor(this.x + x / this.scale), Math.floor(this.y + y / this.scale));
  }

  tell(x, y) {
    const levels = this.pictures.map((each) =>
      x >= 0 && y >= 0 && x < each.width && y < each.height ? each.levels[y * each.width + x] : null);
    const name = (level, i) => `${"AB"[i]} ${level === null ? "outside" : level}`;
    let text = `(${x}, ${y}): ` + levels.map(name).join(", ");
    const more = levels[1] - levels[0];
    if (this.isOneSize && levels[0] !== null) text += `, B \u2212 A = ${more < 0 ? "\u2212" : ""}${Math.abs(more)}`;
    this.find(".readout output").textContent = levels[0] === null && levels[1] === null ? "" : text;
  }

  draw() {
    if (this.request || this.scale === undefined || !this.panes) return;
    this.request = requestAnimationFrame(() => {
      this.request = 0;
      this.paint();
    });
  }

  paint() {
    if (this.isStale) for (const picture of this.pictures) renderWindow(picture, ...this.window);
    this.isStale = false;
    const size = this.scale * 100;
    this.find(".zoom-shown").textContent = (size < 10 ? size.toFixed(1) : Math.round(size)) + " %";
    const [first, second] = this.pictures.map((each) => each.canvas);
    if (this.mode === "side") {
      this.paintPane(0, [[first, 1, 0, 1]], this.labels[0]);
      this.paintPane(1, [[second, 1, 0, 1]], this.labels[1]);
    } else if (this.mode === "swipe") {
      this.paintPane(0, [[first, 1, 0, this.divider], [second, 1, this.divider, 1]], this.labels[0]);
      this.find(".tag.other").textContent = this.labels[1];
      this.find(".handle").style.left = 100 * this.divider + "%";
    } else if (this.mode === "blink") {
      this.paintPane(0, [[this.shown === 0 ? first : second, 1, 0, 1]], this.labels[this.shown]);
    } else {
      const step = this.differenceStep();
      this.paintPane(0, [[step.canvas, step.factor, 0, 1]], "B \u2212 A");
    }
  }

  // The differences, so often halved that a pixel of theirs is at least one of the screen.
  differenceStep() {
    let count = 0;
    while (this.scale * 2 ** count < 1 && count < 5) ++count;
    while (this.steps.length <= count) this.steps.push(halve(this.steps[this.steps.length - 1]));
    const wanted = this.find(".gain").value;
    const gain = wanted === "any" ? 255 : wanted === "auto" ? 255 / Math.max(1, Number(this.root.dataset.largest)) : Number(wanted);
    const step = this.steps[count];
    if (step.gain !== gain) renderDifference(step, gain);
    return { canvas: step.canvas, factor: 2 ** count };
  }

  // parts   [picture, pixels of the frame that one of its own stands for, left and right edge in the pane]
  paintPane(index, parts, label) {
    const pane = this.panes[index];
    const canvas = pane.querySelector("canvas");
    const context = canvas.getContext("2d");
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.fillStyle = getComputedStyle(this.stage).backgroundColor;  // not black: edges of dark frames are seen
    context.fillRect(0, 0, canvas.width, canvas.height);
    for (const [picture, factor, left, right] of parts) {
      context.save();
      context.beginPath();
      const from = Math.round(left * canvas.width);
      context.rect(from, 0, Math.round(right * canvas.width) - from, canvas.height);
      context.clip();
      const scale = this.scale * factor;
      context.imageSmoothingEnabled = scale < 1;
      context.imageSmoothingQuality = "high";
      const x = Math.round(canvas.width / 2 - this.x * this.scale);
      const y = Math.round(canvas.height / 2 - this.y * this.scale);
      context.drawImage(picture, x, y, picture.width * scale, picture.height * scale);
      context.restore();
    }
    pane.querySelector(".tag").textContent = label;
  }
}

// Large frames take a moment: each viewer begins when it comes into sight.
const observer = new IntersectionObserver((entries) => {
  for (const entry of entries) {
    if (!entry.isIntersecting) continue;
    observer.unobserve(entry.target);
    new Viewer(entry.target).start().catch((error) => {
      entry.target.classList.remove("is-live");
      entry.target.dataset.failure = error;
    });
  }
}, { rootMargin: "200px" });
for (const root of document.querySelectorAll(".viewer")) observer.observe(root);
