// The file tree of a sandbox: the host's, with a new /tmp, /data and /proc.
#ifndef SANDBOX_PRIVATE_TREE_H
#define SANDBOX_PRIVATE_TREE_H

#include <string>
#include <vector>

namespace sandbox
{

// Moves this process, the first in new mount and process-id namespaces, to such a tree. Of /tmp and
// /data it keeps the topmost directories that contain the current directory, this program or one of
// `visible_paths`. Throws std::exception if the system refuses a step.
void enter_private_tree(const std::vector<std::string> &visible_paths);

} // namespace sandbox

#endif
