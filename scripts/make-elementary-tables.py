#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes the tables of src/elementary anew: powers, logarithms and sines as pairs of doubles.

    scripts/make-elementary-tables.py

Computes in whole numbers only, by the series of each function. The tests prove every entry by the wide numbers
of the library.
"""

import pathlib

BITS = 400
ONE = 1 << BITS
LICENCE = "// SPDX-" "License-Identifier: Apache-2.0"  # in two, lest it be read as this line's own
FOLDER = pathlib.Path(__file__).resolve().parent.parent / "src" / "elementary"


def inverse_series(n, sign):
    """The inverse tangent of 1 / n, or with sign 1 the inverse hyperbolic one."""
    power = ONE // n
    total, k, factor = power, 1, sign
    while power:
        power //= n * n
        k += 2
        total += factor * (power // k)
        factor *= sign
    return total


PI = 4 * (4 * inverse_series(5, -1) - inverse_series(239, -1))  # Machin, 1706
LOG_OF_TWO = 18 * inverse_series(26, 1) - 2 * inverse_series(4801, 1) + 8 * inverse_series(8749, 1)


def series(x, first, step, sign):
    """The sum of sign^n x^k / k! over k = first, first + step, ..."""
    term, k, total = ONE, 0, 0
    factor = 1
    while term:
        if k >= first and (k - first) % step == 0:
            total += factor * term
            factor *= sign
        k += 1
        term = term * x // ONE // k
    return total


def logarithm(numerator, denominator):
    """Of a fraction near 1."""
    t = (numerator - denominator) * ONE // (numerator + denominator)
    power, k, total = t, 1, 0
    while power not in (0, -1):
        total += power // k
        power = power * t // ONE * t // ONE
        k += 2
    return 2 * total


def sine(count):
    """Of count times pi / 64, below a full turn."""
    quadrant, place = divmod(count, 32)
    if quadrant % 2:
        place = 32 - place
    value = series(PI * place // 64, 1, 2, -1) if place <= 16 else series(PI * (32 - place) // 64, 0, 2, -1)
    return value if quadrant < 2 else -value


def rounded(value, bits):
    """To so many significant bits, half a last place upwards."""
    drop = max(abs(value).bit_length() - bits, 0)
    half = (1 << drop) >> 1
    return ((value + half) >> drop) << drop


def rounded_at(value, place):
    """To a multiple of 2^-place."""
    drop = BITS - place
    return ((value + (1 << (drop - 1))) >> drop) << drop


def text(value):
    """Of at most 53 significant bits, as a double's exact text."""
    if value == 0:
        return "0x0p+0"
    shift = abs(value).bit_length() - 53
    mantissa = value >> shift if shift >= 0 else value << -shift
    return float.hex(float(mantissa) * 2.0 ** (shift - BITS))


def pair(value):
    high = rounded(value, 53)
    return text(high), text(rounded(value - high, 53))


def write(name, comment, declaration, rows):
    lines = [LICENCE, f'#include "elementary/{name}.h"', ""]
    lines += ["namespace vastrelline {", "", f"// {comment}", f"{declaration} = {{{{"]
    lines += ["    {" + ", ".join(row) + "}," for row in rows]
    lines += ["}};", "", "}  // namespace vastrelline", ""]
    (FOLDER / f"{name}.cpp").write_text("\n".join(lines))


def main():
    made = "Made by scripts/make-elementary-tables.py."
    write("PowerTable", made, "constexpr std::array<DoubleDouble, 64> kRootPowers",
          [pair(series(LOG_OF_TWO * j // 64, 0, 1, 1)) for j in range(64)])
    logarithms = []
    for i in range(129):
        # 1 + i / 128, or half of it; its inverse with 16 bits behind the point.
        numerator, denominator = (128 + i, 128) if i <= 52 else (128 + i, 256)
        inverse = (2 * 65536 * denominator + numerator) // (2 * numerator)
        value = -logarithm(inverse, 65536)
        high = rounded_at(value, 42)
        logarithms.append((text(inverse * ONE >> 16), text(high), text(rounded(value - high, 53))))
    write("LogarithmTable", made, "constexpr std::array<LogarithmEntry, 129> kLogarithms", logarithms)
    write("SineTable", made, "constexpr std::array<DoubleDouble, 128> kSines", [pair(sine(j)) for j in range(128)])
    for name, value, places in (("log(2) / 64", LOG_OF_TWO // 64, (32 + 6, 64 + 6)), ("log(2)", LOG_OF_TWO, (42,)),
                                ("pi / 64", PI // 64, (32 + 4, 64 + 4))):
        parts = []
        for place in places:
            part = rounded_at(value, place)
            parts.append(text(part))
            value -= part
        print(name, *parts, text(rounded(value, 53)))
    print("64 / log(2)", text(rounded(64 * ONE * ONE // LOG_OF_TWO, 53)))
    print("64 / pi", text(rounded(64 * ONE * ONE // PI, 53)))
    third = ONE // 3
    print("1 / 3", *pair(third))


if __name__ == "__main__":
    main()
