// Small files of the private /tmp and /data, and the paths that the interface fixes: the tests' own
// copies, so that a changed header shows.
#ifndef TESTS_SUPPORT_FILES_H
#define TESTS_SUPPORT_FILES_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

constexpr char provider_list_path[] = "/tmp/lte_provider_list";
constexpr char qmi_ready_path[] = "/tmp/lte_qmi_msg_handler_thread_ready";
constexpr char profile_busy_path[] = "/tmp/modify_profile_in_progress";
constexpr char debug_log_path[] = "/data/debug_lte.txt";
constexpr char debug_log_1_path[] = "/data/debug_lte_1.txt";
constexpr char debug_log_2_path[] = "/data/debug_lte_2.txt";

inline void write_file(const std::string &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

// "" when there is no such file.
inline std::string read_file(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline bool file_exists(const std::string &path)
{
    return std::filesystem::exists(path);
}

// How many descriptors this process has.
inline long open_descriptors()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

#endif
