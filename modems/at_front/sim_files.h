// The elementary files of a SIM card that can be read without its PIN (3GPP TS 31.102).
#ifndef MODEMS_AT_FRONT_SIM_FILES_H
#define MODEMS_AT_FRONT_SIM_FILES_H

#include "modems/simulated/sim_card.h"

#include <string>

namespace at_front
{

// The content in hexadecimal digits, "" for a file that the card has not.
std::string sim_file(int number, const simulated::SimIdentity &identity);

} // namespace at_front

#endif
