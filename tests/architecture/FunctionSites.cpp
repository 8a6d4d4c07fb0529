// SPDX-License-Identifier: Apache-2.0
#include "FunctionSites.h"

#include <set>
#include <string_view>

namespace vastrelline {

namespace {

class DeclarationReader {
public:
    explicit DeclarationReader(const std::vector<Token>& tokens) : tokens_(tokens) {}

    FunctionSites Read() {
        while (!AtEnd()) {
            ReadScope("");
            if (!AtEnd()) result_.isBalanced = false;  // a closing brace of nothing
            Skip(1);
        }
        return result_;
    }

private:
    bool AtEnd() const { return at_ >= tokens_.size(); }
    bool Is(std::string_view text, size_t ahead = 0) const {
        return at_ + ahead < tokens_.size() && tokens_[at_ + ahead].text == text;
    }
    bool IsAnyOf(const std::set<std::string_view>& words) const {
        return !AtEnd() && words.contains(tokens_[at_].text);
    }
    bool IsWord() const { return !AtEnd() && tokens_[at_].isWord; }
    bool IsOpening() const { return Is("(") || Is("[") || Is("{"); }
    void Skip(size_t count) { at_ += count; }

    // Past the bracket that closes the one here.
    void SkipGroup() {
        int depth = 0;
        for (; !AtEnd(); Skip(1)) {
            if (IsOpening()) ++depth;
            if ((Is(")") || Is("]") || Is("}")) && --depth == 0) return Skip(1);
        }
        result_.isBalanced = false;
    }

    // Past the '>' of the '<' here. In a declaration every '<' opens a list of arguments.
    void SkipAngles() {
        int depth = 0;
        while (!AtEnd()) {
            if (IsOpening()) {
                SkipGroup();
                continue;
            }
            if (Is("<")) ++depth;
            const bool isLast = Is(">") && --depth == 0;
            Skip(1);
            if (isLast) return;
        }
        result_.isBalanced = false;
    }

    void SkipStatement() {
        while (!AtEnd() && !Is(";") && !Is("}")) {
            if (IsOpening())
                SkipGroup();
            else
                Skip(1);
        }
        if (Is(";")) Skip(1);
    }

    // The members of a namespace, or of the named record, up to the closing brace.
    void ReadScope(const std::string& record) {
        while (!AtEnd() && !Is("}")) ReadMember(record);
    }

    void ReadNestedScope(const std::string& record) {
        Skip(1);
        ReadScope(record);
        if (AtEnd()) result_.isBalanced = false;
        Skip(1);
    }

    void ReadMember(const std::string& record) {
        static const std::set<std::string_view> access{"public", "private", "protected"};
        static const std::set<std::string_view> withoutFunction{"using", "typedef", "enum", "static_assert"};
        if (IsAnyOf(access) && Is(":", 1)) return Skip(2);
        if (IsAnyOf(withoutFunction)) return SkipStatement();
        if (Is("extern") && Is("\"", 1) && Is("{", 2)) {
            Skip(2);
            return ReadNestedScope(record);
        }
        if (Is("namespace")) {
            while (!AtEnd() && !Is("{") && !Is(";")) Skip(1);
            return Is("{") ? ReadNestedScope("") : Skip(1);
        }
        ReadDeclaration(Is("friend") ? "" : record);
    }

    // A class, a function or a variable.
    void ReadDeclaration(const std::string& record) {
        static const std::set<std::string_view> recordKeys{"class", "struct", "union"};
        static const std::set<std::string_view> withBrackets{"alignas",  "decltype",      "explicit",
                                                             "noexcept", "__attribute__", "__declspec"};
        bool isRecord = false;
        std::string recordName;
        while (!AtEnd() && !Is("}")) {
            if (Is(";")) return Skip(1);
            if (Is("=")) return SkipStatement();
            if (Is("operator")) return ReadOperator();
            if (Is("(") && IsFunctionName()) return ReadFunction(record);
            if (Is("{") && isRecord) {
                ReadNestedScope(recordName);
                return SkipStatement();
            }
            if (Is("<")) {
                SkipAngles();
            } else if (IsOpening()) {
                SkipGroup();
            } else if (IsAnyOf(withBrackets) && Is("(", 1)) {
                Skip(1);
                SkipGroup();
            } else {
                if (isRecord && recordName.empty() && IsWord()) recordName = tokens_[at_].text;
                isRecord = isRecord || IsAnyOf(recordKeys);
                Skip(1);
            }
        }
    }

    // Before the '(' here stands a name, and behind it no '*' or '&' as in a pointer to a function.
    bool IsFunctionName() const { return at_ > 0 && tokens_[at_ - 1].isWord && !Is("*", 1) && !Is("&", 1); }

    void ReadOperator() {
        Skip(1);
        if (Is("(")) Skip(2);
        while (!AtEnd() && !Is("(")) Skip(1);
        FunctionSite site{};
        ReadRestOfFunction(site);
    }

    void ReadFunction(const std::string& record) {
        const size_t name = at_ - 1;
        FunctionSite site{tokens_[name].text, record, name, 0, 0, !Is(")", 1)};
        const std::string_view before = name > 0 ? std::string_view(tokens_[name - 1].text) : "";
        if (before == "::" && name > 1) site.record = tokens_[name - 2].text;
        const bool isListed = before != "~" && site.name != site.record;
        ReadRestOfFunction(site);
        if (isListed) result_.sites.push_back(site);
    }

    // From the parameter list to the ';' or the end of the body.
    void ReadRestOfFunction(FunctionSite& site) {
        SkipGroup();
        while (!AtEnd() && !Is("}")) {
            if (Is(";") || Is("=")) return SkipStatement();
            if (Is("{")) {
                site.bodyBegin = at_;
                SkipGroup();
                site.bodyEnd = at_;
                result_.hasCode = true;
                return;
            }
            if (Is(":"))
                SkipInitialisers();
            else if (Is("<"))
                SkipAngles();
            else if (IsOpening())
                SkipGroup();
            else
                Skip(1);
        }
    }

    // A constructor's, from the ':' to the body: names, each with a group, and commas between.
    void SkipInitialisers() {
        do {
            Skip(1);
            while (!AtEnd() && !IsOpening()) Is("<") ? SkipAngles() : Skip(1);
            SkipGroup();
        } while (Is(","));
    }

    const std::vector<Token>& tokens_;
    size_t at_ = 0;
    FunctionSites result_{{}, false, true};
};

}  // namespace

FunctionSites FindFunctionSites(const std::vector<Token>& tokens) { return DeclarationReader(tokens).Read(); }

}  // namespace vastrelline
