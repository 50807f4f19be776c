// The debug log as a test reads it: on while the object lives, at a fixed time.
#ifndef TESTS_SUPPORT_DEBUG_LOG_FILE_H
#define TESTS_SUPPORT_DEBUG_LOG_FILE_H

#include "cmif/cmif.h"
#include "files.h"
#include "memory_store.h"
#include "record.h"
#include "system_calls.h"

#include <cstdlib>

constexpr char debug_log_stamp[] = "11-14_22:13:20:123"; // on each of its lines

inline Recorded init_log(const std::string &enable)
{
    store::set("debug_lte_enable", enable);
    return record(shared_debug_lte_mutex_init);
}

inline void write_log(const std::string &message)
{
    shared_debug_lte_write_log_file("%s", message.c_str());
}

class DebugLogFile
{
public:
    DebugLogFile()
    {
        setenv("TZ", "UTC0", 1);
        calls::set_time(1'700'000'000, 123'000);
        (void)init_log("1");
    }
    ~DebugLogFile() { (void)record(shared_debug_lte_mutex_deinit); }
    DebugLogFile(const DebugLogFile &) = delete;
    DebugLogFile &operator=(const DebugLogFile &) = delete;

    // All that was logged so far: a message that fills the buffer pushes out what is pending.
    [[nodiscard]] static std::string text()
    {
        const std::string filler(127, '#');
        write_log(filler);
        std::string all = read_file(debug_log_path);
        for (size_t at; (at = all.find(filler)) != std::string::npos;)
            all.erase(at, filler.size());
        return all;
    }
};

#endif
