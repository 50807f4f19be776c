#ifndef CMIF_DEBUG_LOG_H
#define CMIF_DEBUG_LOG_H

namespace cmif
{

// Read at init. 0: nothing is logged, so nothing needs to be formatted.
// NOLINTNEXTLINE(bugprone-dynamic-static-initializers): constinit where it is defined
extern int g_debug_lte_enable;

} // namespace cmif

#endif
