// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <clocale>
#include <cstdlib>
#include <locale>
#include <string>

#include "support/TemporaryFolder.h"

namespace vastrelline {

// While it lives, the process speaks of numbers with a decimal comma and dots between thousands, as a host
// may: the global locale of C++ always, that of C where the system has or can make such a one.
class CommaLocale {
public:
    CommaLocale() : ownC_(std::setlocale(LC_ALL, nullptr)) {
        // The locale owns its facet.
        ownCpp_ = std::locale::global(std::locale(std::locale::classic(), new Comma));
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252", "de-DE", "German"})
            if (Enter(name)) return;
#ifndef _WIN32
        // The C library finds locales in the folder that this names.
        const std::string make = "localedef -i de_DE -f UTF-8 " + (folder_.Path() / "de_DE.UTF-8").string() +
                                 " > " + (folder_.Path() / "output").string() + " 2>&1";
        if (std::system(make.c_str()) != 0) return;
        setenv("LOCPATH", folder_.Path().c_str(), 1);
        Enter("de_DE.UTF-8");
        unsetenv("LOCPATH");
#endif
    }
    ~CommaLocale() {
        std::locale::global(ownCpp_);
        std::setlocale(LC_ALL, ownC_.c_str());
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    // Whether the C library has it, too.
    bool IsOfC() const { return isOfC_; }

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    bool Enter(const char* name) {
        isOfC_ = std::setlocale(LC_ALL, name) != nullptr && *std::localeconv()->decimal_point == ',';
        return isOfC_;
    }

    std::string ownC_;
    std::locale ownCpp_;
    TemporaryFolder folder_;
    bool isOfC_ = false;
};

}  // namespace vastrelline
