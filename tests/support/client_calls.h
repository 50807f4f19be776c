// What the tests of calls share.
#ifndef TESTS_SUPPORT_CLIENT_CALLS_H
#define TESTS_SUPPORT_CLIENT_CALLS_H

#include "client/call.h"

// The failure of a call; one with the status `done` when it doesn't fail.
inline client::Failure failure_of(const client::Call &failing,
                                  const client::CallOptions &options = {})
{
    try {
        client::call(options, failing);
    } catch (const client::Failure &failure) {
        return failure;
    }
    return {client::Exit::done, "no failure"};
}

#endif
