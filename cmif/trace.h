// Trace sites: one object for each place that may print a line. Each reads its switch from the
// store on its own first use.
#ifndef CMIF_TRACE_H
#define CMIF_TRACE_H

#include <cstdarg>

namespace cmif
{

inline constexpr char at_switch[] = "debug_at_cmif";
inline constexpr char qmi_switch[] = "debug_qmi_cmif";

class TraceSite
{
public:
    bool on(const char *key)
    {
        const int level = ~__atomic_load_n(&inverted_level_, __ATOMIC_RELAXED);
        return (level == unread ? read(key) : level) > 0;
    }

private:
    int read(const char *key);

    // A switch that holds -1 therefore stays unread, and is read again on each use.
    static constexpr int unread = -1;
    // Inverted, so that an unread site is all zeros: it lies in .bss and takes no room in the file.
    int inverted_level_ = ~unread;
};

// A site of the getters and AT requests.
class AtSite : public TraceSite
{
public:
    bool on() { return TraceSite::on(at_switch); }
    [[gnu::format(printf, 2, 3)]] void print(const char *format, ...);
};

// A site of the QMI calls. Its lines begin with "[CMIF-QMI] - ".
class QmiSite : public TraceSite
{
public:
    [[gnu::format(printf, 2, 3)]] void print(const char *format, ...);
    [[gnu::format(printf, 2, 0)]] void vprint(const char *format, std::va_list values);
};

} // namespace cmif

#endif
