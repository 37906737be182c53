// SPDX-License-Identifier: Apache-2.0
// The exit statuses a calling build step sees (the shell sees each modulo 256).
#pragma once

namespace edd::exit_status {

inline constexpr int success = 0;
inline constexpr int help = 1;
inline constexpr int command_line = -101;
inline constexpr int parse_failed = -102;
inline constexpr int file_not_opened = -103;
inline constexpr int fatal = -500;

}  // namespace edd::exit_status
