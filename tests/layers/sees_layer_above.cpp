// SPDX-License-Identifier: Apache-2.0
// Compiled with the model library's include directories: the writer is a layer above, so
// this must not compile.
#include "xml/xml_writer.hpp"
