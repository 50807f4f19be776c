// An open file that is read or written as a whole.
#ifndef PLATFORM_FILE_H
#define PLATFORM_FILE_H

#include <string>
#include <string_view>

namespace host_store
{

class File
{
public:
    File(const std::string &path, int flags); // does not block, not even on a pipe
    ~File();
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    // False with the reason in errno, as in the other functions.
    bool is_open() const { return descriptor_ >= 0; }
    // Whether it is a regular file of a size that a save can have written.
    bool is_readable_file() const;
    // Appends the whole file to `text`.
    bool read_all(std::string &text) const;
    // Returns once the text is on the disk.
    bool write_all(std::string_view text) const;

private:
    int descriptor_;
};

} // namespace host_store

#endif
