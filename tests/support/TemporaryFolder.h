// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace vastrelline {

// A fresh, empty folder for one test. It goes with everything in it when the object goes.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static std::atomic<uint32_t> count{0};
        std::random_device entropy;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
            path_ = std::filesystem::temp_directory_path() /
                    ("vastrelline-" + std::to_string(entropy()) + "-" + std::to_string(now) + "-" +
                     std::to_string(count++));
            if (std::filesystem::create_directory(path_)) return;
        }
        throw std::runtime_error("no temporary folder");
    }

    ~TemporaryFolder() {
        // A test may have left marks that forbid to delete.
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ignored);
        std::filesystem::recursive_directory_iterator entries(path_, ignored);
        while (!ignored && entries != std::filesystem::recursive_directory_iterator()) {
            if (!entries->is_symlink(ignored))
                std::filesystem::permissions(entries->path(), std::filesystem::perms::owner_all,
                                             std::filesystem::perm_options::add, ignored);
            entries.increment(ignored);
        }
        std::filesystem::remove_all(path_, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path Path() const { return path_; }

    // Folder, the platform's separator and `leaf` (ASCII), as the library takes paths.
    std::wstring Wide(std::wstring_view leaf) const {
        return path_.wstring() + static_cast<wchar_t>(std::filesystem::path::preferred_separator) +
               std::wstring(leaf);
    }

    // The same as a text. What stands behind the folder may have several levels, with "/".
    std::string Narrow(std::string_view leaf) const {
        std::string text(leaf);
        std::replace(text.begin(), text.end(), '/',
                     static_cast<char>(std::filesystem::path::preferred_separator));
        return path_.string() + static_cast<char>(std::filesystem::path::preferred_separator) + text;
    }

private:
    static constexpr int kAttempts = 100;
    std::filesystem::path path_;
};

// Makes or replaces a file.
inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot write " + path.string());
}

// All bytes of a file; a file that cannot be read throws.
inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace vastrelline
