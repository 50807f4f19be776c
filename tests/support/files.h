// Small files of the private /tmp and /data.
#ifndef TESTS_SUPPORT_FILES_H
#define TESTS_SUPPORT_FILES_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline void write_file(const std::string &path, const std::string &bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

// Empty when there is no such file.
inline std::string read_file(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline bool file_exists(const std::string &path)
{
    return std::filesystem::exists(path);
}

#endif
