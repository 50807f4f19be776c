#ifndef CMIF_TIME_STAMP_H
#define CMIF_TIME_STAMP_H

namespace cmif
{

// The current local time as log lines show it, in the object itself: safe in several threads.
class TimeStamp
{
public:
    TimeStamp();
    const char *text() const { return text_; }

private:
    char text_[80]; // room for any six integers
};

} // namespace cmif

#endif
