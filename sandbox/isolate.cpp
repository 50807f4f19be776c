// isolate PROGRAM [ARGUMENT...]: runs a program, usually a test, in a sandbox of its own.
#include "sandbox.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

int main(int argc, char **argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s PROGRAM [ARGUMENT...]\n", argv[0]);
        return 2;
    }
    return sandbox::run_in_sandbox([argv] {
        execvp(argv[1], argv + 1);
        std::fprintf(stderr, "isolate: cannot run %s: %s\n", argv[1], std::strerror(errno));
        return 127;
    });
}
