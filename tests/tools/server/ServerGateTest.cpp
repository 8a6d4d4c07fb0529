// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <set>

#include "server/ServerGate.h"

namespace vastrelline {
namespace {

const ServerGate kGate("0123abcd", 4711);

TEST(ServerGate, TellsItsAddress) { EXPECT_EQ(kGate.Address(), "http://127.0.0.1:4711/0123abcd/"); }

TEST(ServerGate, LetsInWhoKnowsTheToken) {
    EXPECT_EQ(kGate.Judge("/0123abcd/", "127.0.0.1:4711", ""), 0U);
    EXPECT_EQ(kGate.Judge("/0123abcd/api/state?x=/../", "localhost:4711", "http://localhost:4711"), 0U);
    EXPECT_EQ(kGate.Judge("/0123abcd/", "127.0.0.1:4711", "http://127.0.0.1:4711"), 0U);
}

TEST(ServerGate, KnowsNothingForWhoDoesNot) {
    for (const char* const target :
         {"/", "", "*", "/0123abcd", "/0123abce/", "/0123abc/", "/0123abcde/", "/0123ABCD/", "0123abcd/",
          "//0123abcd/", "/x/0123abcd/", "/0123abcd?/", "/%30123abcd/"})
        EXPECT_EQ(kGate.Judge(target, "127.0.0.1:4711", ""), 404U) << target;
}

TEST(ServerGate, RefusesOtherHostsAndOrigins) {
    for (const char* const host :
         {"", "127.0.0.1", "127.0.0.1:4712", "evil.example:4711", "127.0.0.1:4711.evil.example", "localhost",
          "[::1]:4711", "LOCALHOST:4711"})
        EXPECT_EQ(kGate.Judge("/0123abcd/", host, ""), 403U) << host;
    for (const char* const origin :
         {"null", "http://evil.example", "https://127.0.0.1:4711", "http://127.0.0.1",
          "http://127.0.0.1:4711.evil.example", "127.0.0.1:4711", "http://"})
        EXPECT_EQ(kGate.Judge("/0123abcd/", "127.0.0.1:4711", origin), 403U) << origin;
}

TEST(ServerGate, SplitsPathAndQuery) {
    const std::optional<HttpRequest> request =
        kGate.Split("/0123abcd/api/set%20a?x=1%2B2&y=a+b&x=3&empty=&alone&=nameless");
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->path, "api/set a");
    EXPECT_EQ(request->query,
              (std::map<std::string, std::string>{
                  {"x", "1+2"}, {"y", "a b"}, {"empty", ""}, {"alone", ""}, {"", "nameless"}}));
    EXPECT_EQ(kGate.Split("/0123abcd/")->path, "");
    EXPECT_EQ(kGate.Split("/0123abcd/a+b")->path, "a+b");
}

TEST(ServerGate, TakesNoBrokenEscape) {
    for (const char* const target : {"/0123abcd/%", "/0123abcd/%2", "/0123abcd/%2g", "/0123abcd/%+1",
                                     "/0123abcd/?a=%", "/0123abcd/?%zz=1", "/0123abcd/%-1"})
        EXPECT_FALSE(kGate.Split(target).has_value()) << target;
}

TEST(ServerGate, MakesTokensOfTheirOwn) {
    std::set<std::string> tokens;
    for (int i = 0; i < 100; ++i) tokens.insert(MakeToken());
    EXPECT_EQ(tokens.size(), 100U);
    for (const std::string& token : tokens) {
        EXPECT_EQ(token.size(), 32U);
        EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
    }
}

TEST(ServerGate, AllowsTheBrowserNothingFromElsewhere) {
    const std::string policy = ContentPolicy(4711, "abc");
    EXPECT_TRUE(policy.starts_with("default-src 'none'; script-src 'self'; style-src 'self' 'nonce-abc';"));
    EXPECT_EQ(policy.find("unsafe"), std::string::npos);
    EXPECT_TRUE(policy.ends_with("connect-src 'self' ws://127.0.0.1:4711 ws://localhost:4711"));
}

}  // namespace
}  // namespace vastrelline
