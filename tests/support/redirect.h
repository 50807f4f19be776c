// Redirects a file descriptor to memory as long as the object exists.
#ifndef TESTS_SUPPORT_REDIRECT_H
#define TESTS_SUPPORT_REDIRECT_H

#include <string>

class Redirect
{
public:
    explicit Redirect(int descriptor);
    ~Redirect();
    Redirect(const Redirect &) = delete;
    Redirect &operator=(const Redirect &) = delete;

    // Restores the descriptor in this process; output of children is still collected.
    void restore();

    // All output so far, of this process and its children.
    [[nodiscard]] std::string bytes() const;

private:
    int descriptor_;
    int original_;
    int memory_;
};

#endif
