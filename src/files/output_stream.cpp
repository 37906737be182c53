// SPDX-License-Identifier: Apache-2.0
#include "files/output_stream.hpp"

#include <string_view>
#include <system_error>
#include <utility>

namespace edd {

OutputStream::OutputStream(std::string name)
    : std::ostream(nullptr), file_(std::move(name), temporary_files::OnInterrupt::put_in_place), buffer_(file_) {
    rdbuf(&buffer_);
}

OutputStream::Buffer::int_type OutputStream::Buffer::overflow(int_type c) {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(c);
        pbump(1);
    }
    return traits_type::not_eof(c);
}

int OutputStream::Buffer::sync() {
    const std::string_view pending(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(bytes_.data(), bytes_.data() + bytes_.size());
    try {
        file_.write(pending);
    } catch (const std::system_error&) {
        return -1;
    }
    return 0;
}

}  // namespace edd
