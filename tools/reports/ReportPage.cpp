// SPDX-License-Identifier: Apache-2.0
#include "reports/ReportPage.h"

#include <cstddef>
#include <utility>

#include "files/Sha256.h"
#include "messages/Markup.h"
#include "reports/Base64.h"
#include "reports/ReportAssets.h"

namespace vastrelline {
namespace {

std::string_view ClassOf(ReportVerdict verdict) {
    switch (verdict) {
        case ReportVerdict::Well:
            return "well";
        case ReportVerdict::Findings:
            return "findings";
        case ReportVerdict::Failed:
            break;
    }
    return "failed";
}

uint8_t HexValue(char digit) { return static_cast<uint8_t>(digit <= '9' ? digit - '0' : digit - 'a' + 10); }

// The one script or style that a page may have, as a content security policy names it.
std::string PolicyHash(std::string_view text) {
    const std::string digits = Sha256Of(std::string(text));
    std::vector<uint8_t> hash;
    for (size_t i = 0; i < digits.size(); i += 2)
        hash.push_back(static_cast<uint8_t>(HexValue(digits[i]) << 4 | HexValue(digits[i + 1])));
    return "'sha256-" + EncodeBase64(hash) + "'";
}

std::string Cell(const std::string& element, CellKind kind, std::string_view text) {
    std::string markup;
    markup.append("<").append(element);
    if (kind == CellKind::Number) markup.append(" class=\"number\"");
    markup.append(kind == CellKind::Code ? "><code>" : ">").append(EscapeMarkup(text));
    return markup.append(kind == CellKind::Code ? "</code></" : "</").append(element).append(">");
}

std::string RowStart(const ReportRow& row) {
    std::string markup = "<tr";
    if (row.mark) markup.append(" class=\"").append(ClassOf(*row.mark)).append("\"");
    return markup.append(">");
}

// A table wider than the page is moved on its own, with the keyboard, too.
std::string TableStart(std::string_view caption, std::string_view className) {
    const std::string escaped = EscapeMarkup(caption);
    std::string markup = "<div class=\"scroll\" role=\"group\" tabindex=\"0\" aria-label=\"";
    markup.append(escaped).append("\"><table class=\"").append(className);
    return markup.append("\"><caption>").append(escaped).append("</caption>\n");
}

}  // namespace

ReportPage::ReportPage(std::string title) : title_(std::move(title)) {}

void ReportPage::SetVerdict(ReportVerdict verdict, std::string_view headline, std::string_view sentence) {
    verdict_ = "<div class=\"verdict ";
    verdict_.append(ClassOf(verdict)).append("\"><p class=\"headline\">").append(EscapeMarkup(headline));
    verdict_.append("</p><p>").append(EscapeMarkup(sentence)).append("</p></div>\n");
}

void ReportPage::BeginSection(std::string_view title, std::string_view id) {
    if (isInSection_) body_ += "</section>\n";
    isInSection_ = true;
    body_ += "<section";
    if (!id.empty()) body_ += " id=\"" + EscapeMarkup(id) + "\"";
    body_ += "><h2>" + EscapeMarkup(title) + "</h2>\n";
}

void ReportPage::AddParagraph(std::string_view text) { body_ += "<p>" + EscapeMarkup(text) + "</p>\n"; }

void ReportPage::AddTable(std::string_view caption, const std::vector<ReportColumn>& columns,
                          const std::vector<ReportRow>& rows) {
    body_ += TableStart(caption, "list") + "<thead><tr>";
    for (const ReportColumn& column : columns) {
        const CellKind kind = column.kind == CellKind::Number ? CellKind::Number : CellKind::Text;
        body_ += Cell("th", kind, column.title);
    }
    body_ += "</tr></thead>\n<tbody>\n";
    for (const ReportRow& row : rows) {
        body_ += RowStart(row);
        for (size_t i = 0; i < columns.size() && i < row.cells.size(); ++i)
            body_ += Cell("td", columns[i].kind, row.cells[i]);
        body_ += "</tr>\n";
    }
    body_ += "</tbody></table></div>\n";
}

void ReportPage::AddFacts(std::string_view caption, const std::vector<ReportRow>& rows) {
    body_ += TableStart(caption, "facts") + "<tbody>\n";
    for (const ReportRow& row : rows) {
        body_ += RowStart(row);
        for (size_t i = 0; i < row.cells.size(); ++i)
            body_ += i == 0 ? "<th scope=\"row\">" + EscapeMarkup(row.cells[i]) + "</th>"
                            : Cell("td", CellKind::Text, row.cells[i]);
        body_ += "</tr>\n";
    }
    body_ += "</tbody></table></div>\n";
}

void ReportPage::AddBlankLines(const std::vector<std::string>& labels) {
    body_ += "<div class=\"blanks\">\n";
    for (const std::string& label : labels) body_ += "<p class=\"blank\">" + EscapeMarkup(label) + "</p>\n";
    body_ += "</div>\n";
}

std::vector<uint8_t> ReportPage::Bytes() const {
    const std::string style =
        std::string(ReportStyle()) + (hasViewer_ ? std::string(ViewerStyle()) : std::string());
    std::string page =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; img-src data:; "
        "style-src " +
        PolicyHash(style) + "; script-src " + (hasViewer_ ? PolicyHash(ViewerScript()) : "'none'") +
        "; base-uri 'none'; form-action 'none'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta name=\"color-scheme\" content=\"light dark\">\n"
        "<link rel=\"icon\" href=\"data:,\">\n<title>" +
        EscapeMarkup(title_) + "</title>\n<style>" + style + "</style>\n</head>\n<body>\n<main>\n<h1>" +
        EscapeMarkup(title_) + "</h1>\n" + verdict_ + body_ + (isInSection_ ? "</section>\n" : "") +
        "</main>\n";
    if (hasViewer_) page += "<script>" + std::string(ViewerScript()) + "</script>\n";
    page += "</body>\n</html>\n";
    return {page.begin(), page.end()};
}

}  // namespace vastrelline
