// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "completion/CompletionScript.h"
#include "support/TemporaryFolder.h"

// The scripts in the shells themselves, which ask the built program.
namespace vastrelline {
namespace {

constexpr const char* kPrompt = "READY> ";
constexpr const char* kEnd = "-THE-END-";

bool IsInstalled(const std::string& shell) {
    return std::system(("command -v " + shell + " >/dev/null 2>&1").c_str()) == 0;  // NOLINT(cert-env33-c)
}

// A shell at a terminal of its own, to which a test types.
class Terminal {
public:
    Terminal(const std::vector<std::string>& words, const TemporaryFolder& folder) {
        std::vector<char*> pointers;
        for (const std::string& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
        pointers.push_back(nullptr);
        const std::string home = folder.Path().string();
        const std::string path =
            std::filesystem::path(VASTRELLINE_TOOL).parent_path().string() + ":" + std::getenv("PATH");
        winsize size{};
        size.ws_row = 50;
        size.ws_col = 2000;  // no line wraps
        child_ = forkpty(&terminal_, nullptr, nullptr, &size);
        if (child_ < 0) throw std::runtime_error("no terminal");
        if (child_ == 0) {
            setenv("HOME", home.c_str(), 1);
            setenv("ZDOTDIR", home.c_str(), 1);
            setenv("PATH", path.c_str(), 1);
            setenv("TERM", "dumb", 1);
            setenv("INPUTRC", "/dev/null", 1);
            if (chdir(home.c_str()) == 0) execvp(pointers[0], pointers.data());
            _exit(127);
        }
    }
    ~Terminal() {
        close(terminal_);  // the shell's terminal is gone, and so goes the shell
        waitpid(child_, nullptr, 0);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    // What the shell says up to the mark, and the mark.
    std::string ReadUntil(const std::string& mark) {
        std::array<char, 4096> piece{};
        while (said_.find(mark) == std::string::npos) {
            const ssize_t count = read(terminal_, piece.data(), piece.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) throw std::runtime_error("the shell ended: " + said_);
            said_.append(piece.data(), static_cast<size_t>(count));
        }
        const size_t end = said_.find(mark) + mark.size();
        const std::string text = said_.substr(0, end);
        said_.erase(0, end);
        return text;
    }

    void Type(const std::string& keys) {
        if (write(terminal_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
            throw std::runtime_error("the shell takes no keys");
    }

private:
    std::string said_;  // and not asked for yet
    int terminal_ = -1;
    pid_t child_ = -1;
};

class CompletionScriptTest : public testing::Test {
protected:
    CompletionScriptTest() {
        WriteBytes(folder_.Path() / "my p.ini", "[General]\n[Low Dose]\nPROCMODE=2\n[O'Neil]\n");
        WriteBytes(folder_.Path() / "it's frame.raw", "1234");
        for (const std::string_view shell : kShells)
            WriteBytes(folder_.Path() / ("script." + std::string(shell)),
                       std::string(CompletionScript(shell)));
    }

    // Types a line, tabs among it, and gives the words that the command was called with.
    std::string Words(Terminal& terminal, const std::string& keys) {
        terminal.ReadUntil(kPrompt);
        terminal.Type(keys + "\r");
        const std::string text = terminal.ReadUntil(kEnd);
        const size_t start = text.rfind("CALLED");
        return start == std::string::npos ? text : text.substr(start + 6, text.rfind(kEnd) - start - 6);
    }

    // A function in the place of the program, which tells its words; the mark is not in what is typed.
    static constexpr const char* kTellWords =
        "vastrelline() { printf '%s' CAL LED; printf '<%s>' \"$@\"; printf '%s' -THE -END-; }\n";

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

struct TypedCase {
    std::string keys;
    std::string words;
};

// Of a line and what comes of it.
const std::vector<TypedCase>& TypedCases() {
    static const std::vector<TypedCase> cases{
        {"vastrelline comple\tba\t", "<completion><bash>"},
        {"vastrelline ru\t--prof\tmy\t--sec\tGe\t", "<run><--profile><my p.ini><--section><General>"},
        {"vastrelline run --profile my\\ p.ini --section Lo\t",
         "<run><--profile><my p.ini><--section><Low Dose>"},
        {"vastrelline run --profile 'my p.ini' --section O\t",
         "<run><--profile><my p.ini><--section><O'Neil>"},
        {"vastrelline run --profile \"my p.ini\" --section \"Lo\t",
         "<run><--profile><my p.ini><--section><Low Dose>"},
        {"vastrelline run --profile='my p.ini' --section=Lo\t",
         "<run><--profile=my p.ini><--section=Low Dose>"},
        {"vastrelline run --profile=my\t--section=Ge\t", "<run><--profile=my p.ini><--section=General>"},
        {"vastrelline info it\t", "<info><it's frame.raw>"},
    };
    return cases;
}

TEST_F(CompletionScriptTest, WorksInBash) {
    if (!IsInstalled("bash")) GTEST_SKIP() << "bash is not installed";
    WriteBytes(folder_.Path() / "rc", std::string(kTellWords) + "PS1='" + kPrompt +
                                          "'\nbind 'set enable-bracketed-paste off'\nsource ./script.bash\n");
    Terminal terminal({"bash", "--noprofile", "--rcfile", "rc", "-i"}, folder_);
    for (const TypedCase& typed : TypedCases())
        EXPECT_EQ(Words(terminal, typed.keys), typed.words) << typed.keys;
}

TEST_F(CompletionScriptTest, WorksInZsh) {
    if (!IsInstalled("zsh")) GTEST_SKIP() << "zsh is not installed";
    WriteBytes(folder_.Path() / ".zshrc",
               std::string(kTellWords) + "PS1='" + kPrompt +
                   "'\nunsetopt zle_bracketed_paste prompt_cr prompt_sp 2>/dev/null\n"
                   "autoload -Uz compinit\ncompinit -u -D\nsource ./script.zsh\n");
    Terminal terminal({"zsh", "-d", "-i"}, folder_);
    for (const TypedCase& typed : TypedCases())
        EXPECT_EQ(Words(terminal, typed.keys), typed.words) << typed.keys;
}

TEST_F(CompletionScriptTest, WorksInFish) {
    if (!IsInstalled("fish")) GTEST_SKIP() << "fish is not installed";
    const auto ask = [&](const std::string& line) {
        WriteBytes(folder_.Path() / "line", line);
        const std::string command =
            "cd '" + folder_.Path().string() + "' && HOME=\"$PWD\" PATH=\"" +
            std::filesystem::path(VASTRELLINE_TOOL).parent_path().string() +
            ":$PATH\" fish --no-config -c 'source script.fish; read -z line < line; complete -C \"$line\"' "
            "> answer 2>&1";
        if (std::system(command.c_str()) != 0) ADD_FAILURE() << "fish failed";  // NOLINT(cert-env33-c)
        return ReadBytes(folder_.Path() / "answer");
    };
    EXPECT_EQ(ask("vastrelline compl"), "completion\tPrint a shell's completion script\n");
    EXPECT_EQ(ask("vastrelline completion ba"), "bash\n");
    EXPECT_EQ(ask("vastrelline run --profile my\\ p.ini --section L"), "Low Dose\n");
    EXPECT_EQ(ask("vastrelline run --profile 'my p.ini' --section 'Lo"), "Low Dose\n");
    EXPECT_EQ(ask("vastrelline run --profile 'my p.ini' --section=Ge"), "--section=General\n");
    EXPECT_EQ(ask("vastrelline run --profile 'my p.ini' --section "), "General\nLow Dose\nO'Neil\n");
    EXPECT_EQ(ask("vastrelline info it").rfind("it's frame.raw", 0), 0U);
    EXPECT_EQ(ask("vastrelline run --profile=my").rfind("--profile=my p.ini", 0), 0U);
    EXPECT_EQ(ask("vastrelline run --profile \"my").rfind("my p.ini", 0), 0U);
    EXPECT_EQ(ask("vastrelline run --profile my\\ p").rfind("my p.ini", 0), 0U);
    EXPECT_EQ(ask("vastrelline run --profile ~/my").rfind("~/my p.ini", 0), 0U);
}

TEST_F(CompletionScriptTest, TellsHowToTakeItIn) {
    for (const std::string_view shell : kShells) {
        const std::string_view script = CompletionScript(shell);
        EXPECT_NE(script.find("vastrelline completion " + std::string(shell)), std::string_view::npos);
        EXPECT_NE(script.find("__complete " + std::string(shell)), std::string_view::npos);
        EXPECT_TRUE(script.ends_with('\n'));
    }
}

}  // namespace
}  // namespace vastrelline
