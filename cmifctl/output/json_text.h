// Documents as text for programs.
#ifndef CMIFCTL_OUTPUT_JSON_TEXT_H
#define CMIFCTL_OUTPUT_JSON_TEXT_H

#include "client/failure.h"

#include <string>

namespace cmifctl
{

enum class Layout { indented, one_line };

// Valid JSON whatever bytes the strings hold, and a newline. What could harm a terminal or hide
// from a reader is written as \u escapes; a byte that is not UTF-8 becomes \ufffd.
std::string render_json(const client::Json &document, Layout layout = Layout::indented);

} // namespace cmifctl

#endif
