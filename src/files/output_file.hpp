// SPDX-License-Identifier: Apache-2.0
// A file the run writes (the document, the -t dump, the dependency file, the -e file): whole
// or not at all. A regular file, or a name that does not exist yet, is written to a
// temporary file beside it, which replaces it only when complete; a failure, or a run
// interrupted meanwhile, leaves the target as it was. Anything else (a pipe, a device, the
// program's own standard output) is written directly.
#pragma once

#include <string>
#include <string_view>

#include "files/platform.hpp"
#include "files/temporary_files.hpp"

namespace edd {

class OutputFile {
public:
    // Throws std::system_error when the file cannot be made. `on_interrupt` says what an
    // interruption does with the temporary file.
    explicit OutputFile(std::string name,
                        temporary_files::OnInterrupt on_interrupt = temporary_files::OnInterrupt::remove);
    // Removes the temporary file unless commit() succeeded.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Each throws std::system_error with the operating system's reason.
    void write(std::string_view bytes);
    // Closes the file and puts it in the target's place.
    void commit();
    void set_on_interrupt(temporary_files::OnInterrupt action) { temporary_files::set_action(slot_, action); }

    const std::string& name() const { return name_; }
    // Written straight into the target (not a regular file), so every write shows at once.
    bool direct() const { return temporary_.empty(); }
    // Where the bytes are until commit(): the temporary file, or the name when direct.
    const std::string& written_to() const { return direct() ? name_ : temporary_; }

private:
    std::error_code close_file();

    std::string name_;
    std::string target_;     // the file replaced: the name, with symbolic links followed
    std::string temporary_;  // empty when writing directly
    platform::Handle file_ = platform::no_handle;
    bool owns_file_ = true;  // false for the program's own standard output or error
    int slot_ = -1;          // in the table of temporary files
};

}  // namespace edd
