// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// A folder on its way, as OutputFile is a file on its way: it comes into being under a name of its own beside
// the wanted one and takes the wanted name only when all files are in it. Without Publish the destructor
// removes it with all that is in it.
class OutputFolder {
public:
    // path         a separator at its end does not matter
    // index        the file of the folder that names all the others, as texts in quotation marks: an older
    //              folder is replaced only if each of its files is named there, or if it is empty
    // Errors       OutputError: the path exists and mayReplace is false, is a file, or holds something else;
    //              its folder is missing or not writable
    OutputFolder(const std::string& path, std::string index, bool mayReplace);
    ~OutputFolder();
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;

    // The path under which it will be known.
    const std::string& Path() const { return path_; }

    // Writes a file of the folder. Throws OutputError if the disk does not take it.
    void Write(std::string_view leaf, std::string_view bytes);

    // Gives the folder its name. Throws as the constructor does, also if the name was taken in the meantime.
    void Publish();

private:
    std::string StepAside() const;

    std::string path_;
    std::string index_;
    std::string draftPath_;
    bool mayReplace_;
};

}  // namespace vastrelline
