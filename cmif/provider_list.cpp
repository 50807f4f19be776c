// The provider list: the file that the AT daemon writes after an operator search.
#include "cmif.h"
#include "store.h"

#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

static_assert(sizeof(cmif_provider_info) == 68 && offsetof(cmif_provider_info, stat) == 60);

namespace cmif
{
namespace
{

// The working buffers of one call. The last byte of each stays 0.
struct ProviderList {
    char file[1024] = {};
    // Not cleared between groups: after a shorter group's text the rest of an earlier one is still
    // read, up to the next separator that was split off there. Readers of the list depend on it.
    char group[128] = {};

    void read(int descriptor);
    const char *take_group(const char *open, const char *close);
    void split_group(cmif_provider_info *out);
};

void ProviderList::read(int descriptor)
{
    const off_t length = lseek(descriptor, 0, SEEK_END);
    lseek(descriptor, 0, SEEK_SET);
    if (length <= 0)
        return;
    const auto room = static_cast<off_t>(sizeof file - 1);
    const auto wanted = static_cast<std::size_t>(length < room ? length : room);
    // A failed read leaves an empty list.
    [[maybe_unused]] const ssize_t count = ::read(descriptor, file, wanted);
}

// Copies the text between the parentheses, without a NUL; returns the position after the group.
const char *ProviderList::take_group(const char *open, const char *close)
{
    const auto length = static_cast<std::size_t>(close - open - 1);
    std::memcpy(group, open + 1, length < sizeof group ? length : sizeof group - 1);
    return close + 1;
}

int field_number(const char *field)
{
    char scratch[8];
    copy_text(scratch, field);
    return std::atoi(scratch);
}

void copy_name(char (&out)[20], const char *field)
{
    char scratch[sizeof ProviderList::group] = {};
    symbol_filter(field, scratch);
    copy_text(out, scratch);
}

// Fields after the fifth are split off as well: the NULs that the splitter leaves end what a later,
// shorter group reads.
void ProviderList::split_group(cmif_provider_info *out)
{
    char *rest = nullptr;
    int position = 0;
    for (char *field = strtok_r(group, ",", &rest); field; field = strtok_r(nullptr, ",", &rest)) {
        if (!out)
            continue;
        switch (position++) {
        case 0:
            out->stat = field_number(field);
            break;
        case 1:
            copy_name(out->oper_long, field);
            break;
        case 2:
            copy_name(out->oper_short, field);
            break;
        case 3:
            copy_name(out->oper_numeric, field);
            break;
        case 4:
            out->act = field_number(field);
            break;
        default:
            break;
        }
    }
}

void parse(ProviderList &list, cmif_provider_info *out)
{
    const char *position = list.file;
    for (int count = 0;; ++count) {
        const char *open = std::strchr(position, '(');
        if (!open) {
            std::printf("ptr1 is null.\n");
            return;
        }
        const char *close = std::strchr(open, ')');
        if (!close) {
            std::printf("ptr2 is null.\n");
            return;
        }
        position = list.take_group(open, close);
        std::printf("[%d]sub_result = [%s]\n", count, list.group);
        list.split_group(out ? out + count : nullptr);
    }
}

} // namespace
} // namespace cmif

int shared_CMIF_GetNetworkProviderList(cmif_provider_info *list)
{
    cmif::ProviderList buffers;
    // Any process may create a FIFO there: it must not block the caller.
    const int descriptor = open(CMIF_PROVIDER_LIST_FILE, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor == -1) {
        std::printf("fd file open fail.\n");
        return CMIF_NO_FILE;
    }
    buffers.read(descriptor);
    std::printf("File open read done.\n");
    std::printf("[%s]result = %s\n", "shared_CMIF_GetNetworkProviderList", buffers.file);
    if (std::strchr(buffers.file, '('))
        cmif::parse(buffers, list);
    close(descriptor);
    return CMIF_OK;
}

// No terminating NUL, on purpose: callers clear the destination.
int symbol_filter(const char *src, char *dst)
{
    const char *open = std::strchr(src, '"');
    if (!open) {
        std::memmove(dst, src, std::strlen(src)); // NOLINT(bugprone-not-null-terminated-result)
        return 0;
    }
    const char *close = std::strchr(open + 1, '"');
    if (!close)
        return -1;
    std::memmove(dst, open + 1, static_cast<std::size_t>(close - open - 1));
    return 0;
}
