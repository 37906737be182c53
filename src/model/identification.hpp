// SPDX-License-Identifier: Apache-2.0
// The device identification of a description: seven fields, each unset until read.
#pragma once

#include "model/value.hpp"

namespace edd {

struct Identification {
    ValuePtr manufacturer;
    ValuePtr device_type;
    ValuePtr device_revision;
    ValuePtr dd_revision;  // DD_REVISION and EDD_REVISION both set it
    ValuePtr edd_profile;
    ValuePtr edd_version;
    ValuePtr manufacturer_ext;
};

}  // namespace edd
