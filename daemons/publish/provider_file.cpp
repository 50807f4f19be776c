#include "provider_file.h"

#include "cmif/cmif.h"
#include "public_file.h"

#include <unistd.h>

namespace sim
{

bool write_provider_file(const std::string &list)
{
    return write_public_file(CMIF_PROVIDER_LIST_FILE, list);
}

void remove_provider_file()
{
    unlink(CMIF_PROVIDER_LIST_FILE);
}

} // namespace sim
