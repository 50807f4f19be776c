// cmif-sim serve as a process of its own.
#ifndef TESTS_SOAK_ROUTER_H
#define TESTS_SOAK_ROUTER_H

#include <sys/types.h>

namespace soak
{

class Router
{
public:
    struct Size {          // of all its processes
        int kilobytes = 0; // memory that they have touched and that no file provides
        int descriptors = 0;
    };

    Router();  // waits until it serves; ends the program if it does not
    ~Router(); // ends it by SIGTERM, and the program if it does not end with 0
    Router(const Router &) = delete;
    Router &operator=(const Router &) = delete;

    void kill();
    Size size() const;

private:
    pid_t process_;
};

} // namespace soak

#endif
