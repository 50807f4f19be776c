// Documents as lines of text for scripts: a path leads to each value, "sim.state.code".
#ifndef CMIFCTL_OUTPUT_FLAT_TEXT_H
#define CMIFCTL_OUTPUT_FLAT_TEXT_H

#include "client/failure.h"

#include <string>
#include <vector>

namespace cmifctl
{

// One line "path: value" for each value that is known; elements of arrays are counted from 0.
std::string render_keyvalue(const client::Json &document);

// One line for each path: its value alone, empty when unknown. An enumeration is its name, or its
// code when it has none; other objects and arrays are JSON. Fails with exit 2, listing the paths
// that there are, when one of them doesn't exist.
std::string render_fields(const client::Json &document, const std::vector<std::string> &paths);

} // namespace cmifctl

#endif
