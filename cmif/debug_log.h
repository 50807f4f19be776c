#ifndef CMIF_DEBUG_LOG_H
#define CMIF_DEBUG_LOG_H

namespace cmif
{

// Read at init. 0: nothing is logged, and nothing need be formatted.
extern int
    g_debug_lte_enable; // NOLINT(bugprone-dynamic-static-initializers): constinit where defined

} // namespace cmif

#endif
