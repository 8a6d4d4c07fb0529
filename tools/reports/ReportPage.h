// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

enum class ReportVerdict : uint8_t { Well, Findings, Failed };

enum class CellKind : uint8_t { Text, Number, Code };

struct ReportColumn {
    std::string title;
    CellKind kind = CellKind::Text;  // numbers stand to the right; code is a hash, a path, a command
};

struct ReportRow {
    std::vector<std::string> cells;          // one a column
    std::optional<ReportVerdict> mark = {};  // a colour; a cell must say the same in words
};

// A report for people as one HTML file: it needs nothing from elsewhere and may load nothing (its content
// security policy forbids it), looks dark or light as the reader's system does, and prints. The verdict
// stands first. Every text is escaped here: give it as it is.
//
//     ReportPage page("Self test of Vastrelline 1.0.0");
//     page.SetVerdict(ReportVerdict::Well, "Passed", "All 14 checks gave what they should.");
//     page.BeginSection("Files");
//     page.AddTable("Installed files", {{"File", CellKind::Code}, {"Bytes", CellKind::Number}, {"State"}},
//                   {{{"lib/libvastrelline.so.1", "812344", "as installed"}, ReportVerdict::Well}});
//     page.BeginSection("Signed");
//     page.AddBlankLines({"Name", "Date", "Signature"});
//     file.Write(page.Bytes());
class ReportPage {
public:
    explicit ReportPage(std::string title);

    // headline   a word or two: "Equal", "Different"
    // sentence   what that means here
    void SetVerdict(ReportVerdict verdict, std::string_view headline, std::string_view sentence);

    // What follows stands below this heading. An id makes it the target of links: "#pair-1".
    void BeginSection(std::string_view title, std::string_view id = {});

    void AddParagraph(std::string_view text);

    // caption   what the table holds; people see it above it, and hear it read
    void AddTable(std::string_view caption, const std::vector<ReportColumn>& columns,
                  const std::vector<ReportRow>& rows);

    // Two columns without a head: what, and its value.
    void AddFacts(std::string_view caption, const std::vector<ReportRow>& rows);

    // Lines to be filled in by hand on paper.
    void AddBlankLines(const std::vector<std::string>& labels);

    // Markup that is made of escaped texts.
    void AddMarkup(std::string_view markup) { body_ += markup; }

    // The page gets style and script of the viewer of two pictures (reports/PairViewer.h).
    void UseViewer() { hasViewer_ = true; }

    // The whole file.
    std::vector<uint8_t> Bytes() const;

private:
    std::string title_;
    std::string verdict_;
    std::string body_;
    bool isInSection_ = false;
    bool hasViewer_ = false;
};

}  // namespace vastrelline
