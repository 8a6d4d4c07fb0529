// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FunctionSites.h"
#include "ParsedTree.h"

namespace vastrelline {

namespace {

std::vector<std::string> NamesIn(const std::string& text) {
    const FunctionSites found = FindFunctionSites(ReadSourceText(text).tokens);
    EXPECT_TRUE(found.isBalanced);
    std::vector<std::string> names;
    for (const FunctionSite& site : found.sites)
        names.push_back((site.record.empty() ? "" : site.record + "::") + site.name);
    return names;
}

struct DeclarationCase {
    const char* name;
    const char* text;
    std::vector<std::string> functions;
};

class Declaration : public testing::TestWithParam<DeclarationCase> {};

}  // namespace

TEST_P(Declaration, IsRead) { EXPECT_EQ(NamesIn(GetParam().text), GetParam().functions); }

INSTANTIATE_TEST_SUITE_P(
    Forms, Declaration,
    testing::Values(
        DeclarationCase{"Empty", "", {}},
        DeclarationCase{"Free", "void F(int x);\nint G() { return F(1); }", {"F", "G"}},
        DeclarationCase{"InNamespaces", "namespace a { namespace { void F(); } } void G();", {"F", "G"}},
        DeclarationCase{"ForC", "extern \"C\" { void F(); }\nextern \"C\" int G() {}", {"F", "G"}},
        DeclarationCase{
            "Template", "template <typename T, size_t N> std::span<const T> F(T (&a)[N]) {}", {"F"}},
        DeclarationCase{"DefaultArgument", "void F(int a = (1 < 2), std::vector<int> b = {G()});", {"F"}},
        DeclarationCase{"Attributes", "[[nodiscard]] __attribute__((pure)) int F() noexcept(true);", {"F"}},
        DeclarationCase{
            "TrailingType", "auto F() -> std::map<int, int> { return {}; } void G();", {"F", "G"}},
        DeclarationCase{"Members",
                        "class A : public B<C> { public: int F() const; private: void G(); int x_; };",
                        {"A::F", "A::G"}},
        DeclarationCase{"MembersOfAligned", "struct alignas(8) A { int F(); } a; void G();", {"A::F", "G"}},
        DeclarationCase{"MemberOfNested", "struct A { struct B { int F(); }; int G(); };", {"B::F", "A::G"}},
        DeclarationCase{"MemberOutside", "int A::F() const { return 1; }", {"A::F"}},
        DeclarationCase{"Pure", "struct A { virtual void F() = 0; virtual ~A() = default; };", {"A::F"}},
        DeclarationCase{"Friend", "class A { friend void F(A a); };", {"F"}},
        DeclarationCase{
            "Constructors", "A::A(int a) : B<int>{a}, b_(a) { F(); }\nstruct C { explicit C(int); };", {}},
        DeclarationCase{"AfterConstructor", "A::A() : a_{1}, b_(2) {} void F();", {"F"}},
        DeclarationCase{
            "Operators", "struct A { bool operator()(int) const; A& operator=(A&&) = delete; };", {}},
        DeclarationCase{"Pointers", "struct A { void (*run)(int x); C (*make)(int); };", {}},
        DeclarationCase{
            "FieldOfFunctionType", "struct A { std::function<int(B)> f; int x = G(); int y{G()}; };", {}},
        DeclarationCase{"Variables", "const int a = F(1); std::array<int, 2> b{F(), G()};", {}},
        DeclarationCase{"Lambda", "constexpr auto f = [](int x) { return G(x); };\nvoid F();", {"F"}},
        DeclarationCase{"EnumAndAlias",
                        "enum class E : int { A = F(1), B };\nusing H = void (*)(int);\nvoid G();",
                        {"G"}},
        DeclarationCase{"StaticAssert", "static_assert(F(2) > 1);\nvoid G();", {"G"}},
        DeclarationCase{"ReturnsRecord", "struct A* F(); struct A; void G();", {"F", "G"}}),
    [](const auto& test) { return test.param.name; });

TEST(FunctionSites, KnowBodiesAndParameters) {
    const FunctionSites found =
        FindFunctionSites(ReadSourceText("int F() { return 1; } void G(int x);").tokens);
    ASSERT_EQ(found.sites.size(), 2U);
    EXPECT_EQ(found.sites[0].nameToken, 1U);
    EXPECT_EQ(found.sites[0].bodyBegin, 4U);
    EXPECT_EQ(found.sites[0].bodyEnd, 9U);
    EXPECT_FALSE(found.sites[0].hasParameters);
    EXPECT_EQ(found.sites[1].bodyBegin, found.sites[1].bodyEnd);
    EXPECT_TRUE(found.sites[1].hasParameters);
    EXPECT_TRUE(found.hasCode);
}

TEST(FunctionSites, ALostBracketIsNoticed) {
    for (const char* text : {"void F() {", "void F(", "}", "namespace a {", "std::vector<int a;"})
        EXPECT_FALSE(FindFunctionSites(ReadSourceText(text).tokens).isBalanced) << text;
}

TEST(House, IsReadToItsEnd) {
    for (const char* folder : {"src", "tools", "tests", "bench", "fuzz"}) {
        for (const auto& [path, file] : OwnParsedTree(folder))
            EXPECT_TRUE(file.functions.isBalanced) << folder << '/' << path << " is beyond FindFunctionSites";
    }
}

}  // namespace vastrelline
