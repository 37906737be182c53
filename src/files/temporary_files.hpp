// SPDX-License-Identifier: Apache-2.0
// The temporary files a run has open, in a table an interrupted run can still read: a
// signal handler may neither allocate nor lock, so the names are kept as C strings in
// fixed slots, and a slot is published by its state alone.
#pragma once

#include <string>

namespace edd::temporary_files {

// What an interruption does with a temporary file.
enum class OnInterrupt { remove, put_in_place };

// Adds `temporary`, to be put in the place of `target` on commit (or on an interruption,
// as `action` says). Returns its slot, or -1 when the names do not fit (the file is then
// only removed by the run itself).
int add(const std::string& temporary, const std::string& target, OnInterrupt action);
void set_action(int slot, OnInterrupt action);
// The file is gone or in place: nothing more to do on an interruption.
void forget(int slot);
// Removes every file still listed (or puts it in place): what an interruption does.
void clean_up() noexcept;

}  // namespace edd::temporary_files
