// A file descriptor whose bytes go to memory while the object lives.
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

    // Restores the descriptor; what children write is still captured.
    void restore();

    // What was written so far, by this process and by its children.
    [[nodiscard]] std::string bytes() const;

private:
    int descriptor_;
    int original_;
    int memory_;
};

#endif
