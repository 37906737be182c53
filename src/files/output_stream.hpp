// SPDX-License-Identifier: Apache-2.0
// An output file as a text stream, for the -e file: written like any output (beside the
// target until committed), each flush handing the buffered bytes to the file, so that a
// line flushed is a line the file has. A failed write is not reported: losing a
// diagnostics line must not end the run.
#pragma once

#include <array>
#include <ostream>
#include <streambuf>
#include <string>

#include "files/output_file.hpp"

namespace edd {

class OutputStream : public std::ostream {
public:
    // Throws std::system_error when the file cannot be made. An interruption puts what it
    // holds so far in place.
    explicit OutputStream(std::string name);
    OutputFile& file() { return file_; }

private:
    class Buffer : public std::streambuf {
    public:
        explicit Buffer(OutputFile& file) : file_(file) { setp(bytes_.data(), bytes_.data() + bytes_.size()); }

    protected:
        int_type overflow(int_type c) override;
        int sync() override;

    private:
        OutputFile& file_;
        std::array<char, 8192> bytes_;
    };

    OutputFile file_;
    Buffer buffer_;
};

}  // namespace edd
