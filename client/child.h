// A forked process that runs one call and sends back its result and outputs.
#ifndef CLIENT_CHILD_H
#define CLIENT_CHILD_H

#include "call.h"
#include "file.h"
#include "sent_record.h"

#include <sys/types.h>

namespace client
{

class Child
{
public:
    // With `trace` the library's lines can be read from lines_fd(); without it they are dropped.
    // `sent` notes the request, `unanswered` counts the reply that is to come; null for none.
    // `marker` is removed when the call is ended; null for none, or when it is not the call's.
    Child(const Call &call, bool trace, SentRecord &sent, Unanswered *unanswered,
          const char *marker);
    ~Child();
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;

    int answer_fd() const { return answer_.fd(); }
    int lines_fd() const { return lines_.fd(); } // -1 without trace

    // Returns the status as waitpid() gives it. A call that fails ends with all processes that it
    // has started.
    int wait();
    // Ends the call with all processes that it has started.
    void kill();

private:
    bool has_ended() const;

    pid_t pid_ = -1;
    File answer_;
    File lines_;
};

// What the child sent. Throws the Failure that it sent, or one for a child that died.
Answer decode_answer(const std::string &bytes, int wait_status, const Call &call);

} // namespace client

#endif
