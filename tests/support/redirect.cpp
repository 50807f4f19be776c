#include "redirect.h"

#include "require.h"

#include <cstdio>
#include <sys/mman.h>
#include <unistd.h>

Redirect::Redirect(int descriptor)
    : descriptor_(descriptor), original_(require(dup(descriptor), "dup")),
      memory_(require(memfd_create("output", MFD_CLOEXEC), "memfd_create"))
{
    (void)fflush(nullptr);
    require(dup2(memory_, descriptor_), "dup2");
}

Redirect::~Redirect()
{
    restore();
    close(memory_);
}

void Redirect::restore()
{
    if (original_ < 0)
        return;
    (void)fflush(nullptr);
    require(dup2(original_, descriptor_), "dup2");
    close(original_);
    original_ = -1;
}

std::string Redirect::bytes() const
{
    (void)fflush(nullptr);
    std::string all;
    char part[4096];
    for (ssize_t size;
         (size = pread(memory_, part, sizeof part, static_cast<off_t>(all.size()))) > 0;)
        all.append(part, static_cast<size_t>(size));
    return all;
}
