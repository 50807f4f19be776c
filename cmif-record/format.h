// What the head line of a recording says.
#ifndef CMIF_RECORD_FORMAT_H
#define CMIF_RECORD_FORMAT_H

namespace cmif_record
{

inline constexpr const char *format_name = "cmif-record";
inline constexpr int format_version = 1;

} // namespace cmif_record

#endif
