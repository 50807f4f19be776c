#ifndef SANDBOX_PRIVATE_TREE_H
#define SANDBOX_PRIVATE_TREE_H

#include <string>
#include <vector>

namespace sim
{

/*
 * Gives this process, alone in a fresh mount and process-id name space, a tree of files with a new
 * /tmp, /data and /proc. Throws std::exception where the system does not let it.
 */
void enter_private_tree(const std::vector<std::string> &keep);

} // namespace sim

#endif
