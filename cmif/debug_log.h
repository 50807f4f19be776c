#ifndef CMIF_DEBUG_LOG_H
#define CMIF_DEBUG_LOG_H

namespace cmif
{

extern int g_debug_lte_enable; // read at init; 0: nothing is logged, and nothing need be formatted

} // namespace cmif

#endif
