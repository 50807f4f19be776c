/*
 * PROGRAM serve     answers until it is killed; prints a line when it is ready
 * PROGRAM once      connects, makes one call, and ends
 * PROGRAM memory    the same, and prints before it ends: its private memory in KiB, and the bytes
 *                   loaded from files of all libraries but the C library
 * PROGRAM blocks    connects; for each number on standard input makes as many calls and prints the
 *                   nanoseconds that they took
 */
#define _GNU_SOURCE
#include "peer.h"

#include <link.h>
#include <stdio.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

static FILE *results; /* standard output is the libraries' */

static void tell(long long number)
{
    fprintf(results, "%lld\n", number);
    fflush(results);
}

void ready(void)
{
    tell(0);
}

static long long now(void)
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

static int blocks(void)
{
    char line[32];
    while (fgets(line, sizeof line, stdin)) {
        int calls = 0, failed = 0;
        sscanf(line, "%d", &calls);
        const long long start = now();
        for (int call = 0; call < calls; ++call)
            failed |= peer.call();
        const long long spent = now() - start;
        if (failed)
            return 1;
        tell(spent);
    }
    return 0;
}

static int of_the_c_library(const char *path)
{
    static const char *const names[] = {"libc.so",  "libm.so",      "libdl.so", "libpthread.so",
                                        "librt.so", "libresolv.so", "ld-linux", "linux-vdso"};
    const char *const slash = strrchr(path, '/');
    const char *const name = slash ? slash + 1 : path;
    for (size_t i = 0; i < sizeof names / sizeof *names; ++i)
        if (strncmp(name, names[i], strlen(names[i])) == 0)
            return 1;
    return *name == '\0'; /* the program itself */
}

static int add_loaded(struct dl_phdr_info *object, size_t size, void *sum)
{
    (void)size;
    if (of_the_c_library(object->dlpi_name))
        return 0;
    for (int i = 0; i < object->dlpi_phnum; ++i)
        if (object->dlpi_phdr[i].p_type == PT_LOAD)
            *(long long *)sum += (long long)object->dlpi_phdr[i].p_filesz;
    return 0;
}

static int memory(void)
{
    long long loaded = 0;
    char line[256];
    long kilobytes = 0;
    const int failed = peer.call();
    FILE *const map = fopen("/proc/self/smaps_rollup", "r");
    while (map && fgets(line, sizeof line, map))
        if (sscanf(line, "Private_Dirty: %ld", &kilobytes) == 1)
            tell(kilobytes);
    dl_iterate_phdr(add_loaded, &loaded);
    tell(loaded);
    return failed || kilobytes == 0;
}

static int client(const char *mode)
{
    int failed = peer.start ? peer.start() : 0;
    if (failed)
        return 1;
    if (strcmp(mode, "blocks") == 0)
        failed = blocks();
    else if (strcmp(mode, "memory") == 0)
        failed = memory();
    else
        failed = peer.call();
    if (peer.stop)
        peer.stop();
    return failed != 0;
}

int main(int argc, char **argv)
{
    const char *const mode = argc == 2 ? argv[1] : "";
    if (strcmp(mode, "once") == 0) /* timed as a whole: nothing but the call */
        return client(mode);
    results = fdopen(dup(STDOUT_FILENO), "w");
    if (!results || !freopen("/dev/null", "w", stdout))
        return 1;
    if (strcmp(mode, "serve") != 0)
        return client(mode);
    if (peer.serve)
        peer.serve();
    return 1;
}
