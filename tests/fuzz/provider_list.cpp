// shared_CMIF_GetNetworkProviderList: the input is the file; its lines and records are compared.
#include "tests/cmif/reference/provider_list.h"

#include "fuzz_store.h"
#include "tests/support/files.h"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace
{
constexpr size_t max_groups = 511; // that a file can hold

using List = cmif_provider_info[max_groups];

void fill_file(const unsigned char *data, size_t size)
{
    static const int file = open(provider_list_path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    check(ftruncate(file, 0) == 0, "no file to write");
    check(pwrite(file, data, size, 0) == static_cast<ssize_t>(size), "the file is too short");
}

// What a call prints; the C library lets standard output be another stream.
std::string output_of(int (*call)(cmif_provider_info *), cmif_provider_info *list)
{
    FILE *const terminal = stdout;
    char *bytes = nullptr;
    size_t size = 0;
    stdout = open_memstream(&bytes, &size);
    const int result = call(list);
    fclose(stdout);
    stdout = terminal;
    std::string output(bytes, size);
    free(bytes);
    check(result == 0, "the result");
    return output;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    static List found;
    static List expected;
    memset(found, '?', sizeof found);
    memset(expected, '?', sizeof expected);
    fill_file(data, size);

    const std::string output = output_of(shared_CMIF_GetNetworkProviderList, found);

    const std::string_view file(reinterpret_cast<const char *>(data), size);
    check(output == reference::provider_list(file, expected), "the lines");
    check(memcmp(found, expected, sizeof found) == 0, "the records");
    return 0;
}
