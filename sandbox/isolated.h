// The sandbox in namespaces of its own.
#ifndef SANDBOX_ISOLATED_H
#define SANDBOX_ISOLATED_H

#include "worker.h"

#include <optional>
#include <string>
#include <vector>

namespace sandbox
{

// Does `work` in a private file tree (private_tree.h), with message queues and processes of its
// own. Its exit status; nothing if the system refuses namespaces, with the reason in `refusal`.
std::optional<int> run_isolated(const Work &work, const std::vector<std::string> &visible_paths,
                                const InterruptsIgnored &interrupts, std::string &refusal);

} // namespace sandbox

#endif
