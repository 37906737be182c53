// SPDX-License-Identifier: Apache-2.0
// Compiled with the model library's include directories: the layers below it are visible.
#include "diagnostics/messages.hpp"
#include "files/input_files.hpp"
#include "frontend/token.hpp"
#include "model/value.hpp"
