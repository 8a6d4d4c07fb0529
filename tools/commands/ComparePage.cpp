// SPDX-License-Identifier: Apache-2.0
#include "commands/ComparePage.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iomanip>
#include <limits>
#include <sstream>
#include <utility>

#include "commands/CompareWords.h"
#include "commands/FrameNotes.h"
#include "files/Sha256.h"
#include "formats/RawFormat.h"
#include "frames/LevelTop.h"
#include "library/LibraryFile.h"
#include "messages/Markup.h"
#include "platform/PathText.h"
#include "reports/LevelPlot.h"
#include "reports/PairViewer.h"
#include "reports/ReportPage.h"
#include "reports/StillPicture.h"

namespace vastrelline {
namespace {

constexpr size_t kMostLivePairs = 5;
constexpr size_t kMostLivePixels = size_t{1} << 25;  // of all frames of a page: some 60 megabytes of text
constexpr size_t kMostPictures = 100;                // pairs with small pictures in the overview
constexpr size_t kMostRows = 2000;
constexpr int32_t kThumbnail = 96;
constexpr int kShownDigits = 9;
constexpr double kPercent = 100.0;

std::string Capitalised(std::string_view text) {
    std::string word(text);
    if (!word.empty())
        word.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(word.front())));
    return word;
}

ReportVerdict VerdictOf(ExitCode code) {
    if (code == ExitCode::Well) return ReportVerdict::Well;
    return code == ExitCode::Input ? ReportVerdict::Failed : ReportVerdict::Findings;
}

std::string LeafOf(const std::string& path) {
    if (path == kStandardInput) return "standard input";
    const std::filesystem::path whole = PathOf(path).lexically_normal();
    return (whole.has_filename() ? whole : whole.parent_path()).filename().string();
}

bool IsRead(const PairOutcome& outcome) {
    return outcome.state != PairState::Unreadable && outcome.firstSize && outcome.secondSize;
}

size_t PixelsOf(const PairOutcome& outcome) {
    return PixelCount(outcome.firstSize->width, outcome.firstSize->height) +
           PixelCount(outcome.secondSize->width, outcome.secondSize->height);
}

std::string ButtonFor(const PixelDifference& place, size_t number) {
    std::ostringstream out;
    out << "<button type=\"button\" hidden data-viewer=\"viewer-" << number << "\" data-x=\"" << place.x
        << "\" data-y=\"" << place.y << "\" aria-label=\"Show the pixel at " << place.x << ", " << place.y
        << "\">show</button>";
    return out.str();
}

void AddPlaces(ReportPage& page, const PairFigures& figures, size_t number) {
    std::ostringstream out;
    out << "<div class=\"scroll\" role=\"group\" tabindex=\"0\" aria-label=\"Places\"><table "
           "class=\"places\"><caption>Some of the places, spread over the frame</caption>\n<thead><tr><th "
           "class=\"number\">x</th><th class=\"number\">y</th><th class=\"number\">A</th><th "
           "class=\"number\">B</th><th class=\"number\">B &#8722; A</th><th class=\"screen-only\">In the "
           "viewer</th></tr></thead>\n<tbody>\n";
    for (const PixelDifference& place : figures.places)
        out << "<tr><td class=\"number\">" << place.x << "</td><td class=\"number\">" << place.y
            << "</td><td class=\"number\">" << place.first << "</td><td class=\"number\">" << place.second
            << "</td><td class=\"number\">" << int32_t{place.second} - int32_t{place.first}
            << "</td><td class=\"screen-only\">" << ButtonFor(place, number) << "</td></tr>\n";
    out << "</tbody></table></div>\n";
    page.AddMarkup(out.str());
}

std::string ShareOf(size_t count, size_t all) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(4)
         << kPercent * static_cast<double>(count) / static_cast<double>(all) << " %";
    return text.str();
}

void AddDifferences(ReportPage& page, const PairFigures& figures, size_t number) {
    std::vector<ReportRow> classes;
    for (const DifferenceClass& each : figures.classes)
        if (each.count > 0)
            classes.push_back(
                {{DescribeClass(each), std::to_string(each.count), ShareOf(each.count, figures.pixels)}});
    page.AddTable("How many pixels differ by how many levels",
                  {{"Levels"}, {"Pixels", CellKind::Number}, {"Share", CellKind::Number}}, classes);
    AddPlaces(page, figures, number);
}

void AddFigures(ReportPage& page, const PairFigures& figures, int32_t tolerance, size_t number) {
    const PixelDifference& place = figures.largestPlace;
    std::ostringstream meanSquare;
    meanSquare << std::setprecision(kShownDigits) << figures.meanSquare;
    std::vector<ReportRow> rows{
        {{"Pixels that differ", std::to_string(figures.count) + " of " + std::to_string(figures.pixels) +
                                    " (" + ShareOf(figures.count, figures.pixels) + ")"}},
        {{"Tolerance", std::to_string(tolerance) + (tolerance == 1 ? " level" : " levels")}},
        {{"Beyond the tolerance", std::to_string(figures.beyond)}},
        {{"Largest difference",
          figures.count == 0 ? std::string("0")
                             : std::to_string(figures.largest) + " at (" + std::to_string(place.x) + ", " +
                                   std::to_string(place.y) + "): " + std::to_string(place.first) + " and " +
                                   std::to_string(place.second)}},
        {{"PSNR", DescribeNoise(figures)}},
        {{"Mean squared error", meanSquare.str()}}};
    page.AddMarkup("<div class=\"columns\">\n");
    page.AddFacts("Figures", rows);
    if (figures.count > 0) AddDifferences(page, figures, number);
    page.AddMarkup("</div>\n");
}

std::string HashOfFile(const std::string& path) {
    return path == kStandardInput ? "of standard input not known" : Sha256OfFile(path);
}

void AddFiles(ReportPage& page, const PairOutcome& outcome, const FramePair& frames) {
    std::vector<ReportRow> rows;
    for (const bool isFirst : {true, false}) {
        const std::string& path = isFirst ? outcome.first : outcome.second;
        const LoadedFrame& frame = isFirst ? frames.first : frames.second;
        rows.push_back({{isFirst ? "A" : "B", path, DescribeFrame(frame), std::to_string(frame.sourceBits),
                         HashOfFile(path), Sha256Of(EncodeRaw(frame.frame))}});
    }
    page.AddTable("The files",
                  {{"Frame"},
                   {"File", CellKind::Code},
                   {"What it is"},
                   {"Bits", CellKind::Number},
                   {"SHA-256 of the file", CellKind::Code},
                   {"SHA-256 of the levels", CellKind::Code}},
                  rows);
}

void AddPair(ReportPage& page, const ComparePageInput& input, const PairOutcome& outcome,
             const FramePair& frames, size_t number) {
    const bool isLive = PixelsOf(outcome) <= kMostLivePixels;
    if (isLive) page.UseViewer();
    if (outcome.state == PairState::OtherSize)
        page.AddParagraph("The sizes differ: the frames can be looked at side by side only.");
    if (!isLive)
        page.AddParagraph("The frames are too large for this page: these are small pictures of them.");
    for (const std::string& note : outcome.notes) page.AddParagraph("Note: " + note + ".");
    page.AddMarkup(
        PairViewerMarkup({number, LeafOf(outcome.first), &frames.first.frame, LeafOf(outcome.second),
                          &frames.second.frame, outcome.figures ? outcome.figures->largest : 0, isLive}));
    if (outcome.figures) AddFigures(page, *outcome.figures, input.options->tolerance, number);
    page.AddMarkup("<div class=\"plots\"><figure>" +
                   LevelPlotMarkup(frames.first.frame, frames.second.frame) +
                   "<figcaption>How many pixels have each level (heights are square roots)</figcaption>"
                   "</figure></div>\n");
    AddFiles(page, outcome, frames);
}

void AddMaking(ReportPage& page, const ComparePageInput& input) {
    page.BeginSection("How this was made");
    page.AddFacts("Tool and command", {{{"Tool", "vastrelline " VASTRELLINE_VERSION}},
                                       {{"SHA-256 of its library", Sha256OfFile(LibraryFile())}},
                                       {{"Command", input.commandLine}},
                                       {{"Time", input.made}}});
}

// Which of the pairs have their frames in the page, by their place in the list.
std::vector<size_t> ChooseLive(const std::vector<PairOutcome>& outcomes) {
    std::vector<size_t> chosen;
    size_t pixels = 0;
    for (size_t i = 0; i < outcomes.size() && chosen.size() < kMostLivePairs; ++i) {
        const PairOutcome& each = outcomes[i];
        if (!IsRead(each) || each.state == PairState::Equal) continue;
        if (pixels + PixelsOf(each) > kMostLivePixels) continue;
        pixels += PixelsOf(each);
        chosen.push_back(i);
    }
    return chosen;
}

std::string Thumbnails(const ComparePageInput& input, const PairOutcome& outcome) {
    if (!IsRead(outcome)) return {};
    try {
        const FramePair frames = input.load(outcome);
        const Frame& first = frames.first.frame;
        const Frame& second = frames.second.frame;
        // One window for both: two exposures would look the same through their own.
        const auto [least1, greatest1] = std::minmax_element(first.pixels.begin(), first.pixels.end());
        const auto [least2, greatest2] = std::minmax_element(second.pixels.begin(), second.pixels.end());
        GreyWindow window{std::min(*least1, *least2), std::max(*greatest1, *greatest2)};
        if (window.low == window.high) window = {0, UsualTop(*greatest1)};
        std::string markup;
        for (const Frame* const frame : {&first, &second})
            markup += "<img alt=\"\" src=\"" + DrawStill(*frame, window, kThumbnail).source + "\">";
        return markup;
    } catch (const CancelledError&) {
        throw;
    } catch (const ToolError&) {
        return "changed meanwhile";
    }
}

std::string OverviewRow(const ComparePageInput& input, const PairOutcome& outcome, size_t row,
                        bool isLinked) {
    std::ostringstream out;
    const ReportVerdict verdict = VerdictOf(CodeOf({outcome}));
    out << "<tr class=\""
        << (verdict == ReportVerdict::Well     ? "well"
            : verdict == ReportVerdict::Failed ? "failed"
                                               : "findings")
        << "\"><td>" << StateWords(outcome.state) << "</td><td>";
    const std::string name = "<code>" + EscapeMarkup(outcome.name) + "</code>";
    if (isLinked)
        out << "<a href=\"#pair-" << row << "\">" << name << "</a>";
    else
        out << name;
    if (outcome.state == PairState::OtherSize || outcome.error)
        out << "<br>" << EscapeMarkup(DescribePair(outcome, 0));
    out << "</td>";
    if (outcome.figures)
        out << "<td class=\"number\">" << outcome.figures->count << "</td><td class=\"number\">"
            << outcome.figures->largest << "</td><td class=\"number\">" << std::fixed << std::setprecision(2)
            << outcome.figures->psnr.value_or(std::numeric_limits<double>::infinity()) << "</td>";
    else
        out << "<td></td><td></td><td></td>";
    out << "<td>" << (row < kMostPictures ? Thumbnails(input, outcome) : "") << "</td></tr>\n";
    return out.str();
}

void AddOverview(ReportPage& page, const ComparePageInput& input, const std::vector<size_t>& live) {
    const std::vector<PairOutcome>& outcomes = *input.outcomes;
    page.BeginSection("All pairs, the worst first");
    const size_t rows = std::min(outcomes.size(), kMostRows);
    if (rows > kMostPictures)
        page.AddParagraph("The first " + std::to_string(kMostPictures) + " have small pictures.");
    if (rows < outcomes.size())
        page.AddParagraph("The table has the first " + std::to_string(rows) + " of " +
                          std::to_string(outcomes.size()) + " pairs; --json tells all.");
    page.AddMarkup(
        "<div class=\"scroll\" role=\"group\" tabindex=\"0\" aria-label=\"All pairs\"><table class=\"list "
        "overview\"><thead><tr><th>State</th><th>Name</th><th class=\"number\">Pixels that differ</th><th "
        "class=\"number\">Largest</th><th class=\"number\">PSNR, dB</th><th>A and B</th></tr></thead>\n"
        "<tbody>\n");
    for (size_t i = 0; i < rows; ++i)
        page.AddMarkup(
            OverviewRow(input, outcomes[i], i, std::find(live.begin(), live.end(), i) != live.end()));
    page.AddMarkup("</tbody></table></div>\n");
}

// What is told of pairs whose frames are not in the page.
std::string LeftOutWords(const std::vector<PairOutcome>& outcomes, size_t live) {
    const auto worth =
        static_cast<size_t>(std::count_if(outcomes.begin(), outcomes.end(), [](const PairOutcome& each) {
            return IsRead(each) && each.state != PairState::Equal;
        }));
    if (worth <= live) return {};
    if (live == 0)
        return "The frames are too large for this page. To look at two of them, compare them with --report.";
    return "The frames of the " + std::to_string(live) + " worst of " + std::to_string(worth) +
           " unequal pairs follow. To look at another one, compare its two files with --report.";
}

void AddPairs(ReportPage& page, const ComparePageInput& input) {
    const std::vector<PairOutcome>& outcomes = *input.outcomes;
    const std::vector<size_t> live = ChooseLive(outcomes);
    AddOverview(page, input, live);
    const std::string leftOut = LeftOutWords(outcomes, live.size());
    if (!leftOut.empty()) page.AddParagraph(leftOut);
    for (const size_t i : live) {
        const PairOutcome& outcome = outcomes[i];
        page.BeginSection(outcome.name, "pair-" + std::to_string(i));
        page.AddParagraph(Capitalised(StateWords(outcome.state)) + ": " +
                          DescribePair(outcome, input.options->tolerance) + ".");
        try {
            AddPair(page, input, outcome, input.load(outcome), i);
        } catch (const CancelledError&) {
            throw;
        } catch (const ToolError& error) {
            page.AddParagraph(std::string("The files have changed meanwhile: ") + error.what());
        }
    }
}

}  // namespace

std::vector<uint8_t> MakeComparePage(const ComparePageInput& input) {
    const std::vector<PairOutcome>& outcomes = *input.outcomes;
    ReportPage page("Comparison of " + LeafOf(input.options->first) + " and " +
                    LeafOf(input.options->second));
    std::string sentence =
        input.areFolders ? DescribePairs(outcomes) : DescribePair(outcomes.front(), input.options->tolerance);
    if (!input.areFolders && outcomes.front().state == PairState::Equal)
        sentence = "all of the " + sentence + " have the same levels";
    page.SetVerdict(VerdictOf(CodeOf(outcomes)), Capitalised(HeadlineOf(outcomes)),
                    Capitalised(sentence) + ".");
    if (input.areFolders) {
        AddPairs(page, input);
    } else {
        page.BeginSection("Both frames");
        AddPair(page, input, outcomes.front(), input.load(outcomes.front()), 1);
    }
    AddMaking(page, input);
    return page.Bytes();
}

}  // namespace vastrelline
