// A file the run writes (the document, the -t dump): whole or not at all. A regular file,
// or a name that does not exist yet, is written to a temporary file beside it, which
// replaces it only when complete; a failure, or a run killed meanwhile, leaves the target
// as it was. Anything else (a pipe, a device, the program's own standard output) is
// written directly.
#pragma once

#include <string>
#include <string_view>

namespace edd {

class OutputFile {
public:
    // Throws std::system_error when the file cannot be made.
    explicit OutputFile(std::string name);
    // Removes the temporary file unless commit() succeeded.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Each throws std::system_error with the operating system's reason.
    void write(std::string_view bytes);
    // Closes the file and puts it in the target's place.
    void commit();

    const std::string& name() const { return name_; }
    // Written straight into the target (not a regular file), so every write shows at once.
    bool direct() const { return temporary_.empty(); }

private:
    bool close_file();  // false when closing reports a failure

    std::string name_;
    std::string target_;     // the file replaced: the name, with symbolic links followed
    std::string temporary_;  // empty when writing directly
    int fd_ = -1;
    bool owns_fd_ = true;  // false for the program's own standard output or error
};

}  // namespace edd
