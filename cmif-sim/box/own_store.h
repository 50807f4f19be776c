// The configuration store of one run, which starts empty and ends with the run.
#ifndef CMIF_SIM_BOX_OWN_STORE_H
#define CMIF_SIM_BOX_OWN_STORE_H

#include <string>

namespace cmif_sim
{

// The store that the user has chosen, "" for none. A run inside another one does not use its store.
std::string chosen_store();

// A new folder in /tmp, chosen as the store as long as this object exists, unless the user has
// chosen one. Also removes the folders of this user's runs that were killed.
class OwnStore
{
public:
    OwnStore();
    ~OwnStore();
    OwnStore(const OwnStore &) = delete;
    OwnStore &operator=(const OwnStore &) = delete;

private:
    std::string directory_;
    int lock_ = -1;
};

} // namespace cmif_sim

#endif
