// How the program hands a recording's settings to the preloaded library: by the environment, which
// children inherit.
#ifndef CMIF_RECORD_ENVIRONMENT_H
#define CMIF_RECORD_ENVIRONMENT_H

#include "recording.h"

namespace cmif_record
{

void put_into_environment(const RecordingSettings &settings);
// Nothing when this process is not to be recorded.
std::optional<RecordingSettings> settings_from_environment();

} // namespace cmif_record

#endif
