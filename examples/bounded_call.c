#define _DEFAULT_SOURCE /* flock */
#include "bounded_call.h"

#include <cmif.h>
#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

/* A child that still waits for the reply ends after this time: the daemon will not answer any more.
 */
#define GIVE_UP_SECONDS 600

/* Milliseconds of a clock that is never set; the time of day may come from the network. */
static long long now(void)
{
    struct timespec time;

    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

static int time_left(long long end)
{
    const long long left = end - now();
    return left > 0 ? (int)left : 0;
}

/* One caller at a time for each code: replies carry the code and nothing else. The lock belongs to
 * this process and its child, and is free when both have closed it, however they end. */
static int take_lock(int lock, long long end)
{
    const struct timespec pause = {0, 50 * 1000 * 1000};

    while (time_left(end) > 0) {
        if (flock(lock, LOCK_EX | LOCK_NB) == 0)
            return 1;
        nanosleep(&pause, NULL);
    }
    return 0;
}

/* Takes a record of this code off a queue, without waiting. */
static int take_record(int key, int code)
{
    struct cmif_msg record; /* a longer one is cut */
    const int queue = msgget(key, 0);
    return queue != -1 &&
           msgrcv(queue, &record, CMIF_AT_PAYLOAD, code, IPC_NOWAIT | MSG_NOERROR) != -1;
}

static void run_child(struct request *request, int answer)
{
    const int null = open("/dev/null", O_RDWR);

    setsid(); /* goes on when the caller's process group is ended: it takes the late reply away */
    dup2(null, STDOUT_FILENO); /* some calls print, and the output is the page's */
    dup2(null, STDERR_FILENO);
    signal(SIGALRM, SIG_DFL);
    alarm(GIVE_UP_SECONDS);
    request->result = request->call(request->values);
    if (write(answer, &request->result, sizeof request->result) > 0 &&
        write(answer, request->values, request->size) > 0)
        _exit(0);
    _exit(1);
}

static enum outcome wait_for_child(pid_t child, int answer, long long end, struct request *request)
{
    struct pollfd ready = {answer, POLLIN, 0};

    while (poll(&ready, 1, time_left(end)) == -1 && errno == EINTR) {} /* goes on after a signal */
    if (ready.revents != 0) { /* the answer, or the child has ended without one */
        const int size = sizeof request->result;
        const int answered = read(answer, &request->result, sizeof request->result) == size &&
                             read(answer, request->values, request->size) == (ssize_t)request->size;
        waitpid(child, NULL, 0);
        return answered ? ANSWERED : FAILED;
    }
    if (!take_record(request->queue, request->code))
        return PENDING;   /* the child goes on, with the lock, and takes the late reply away */
    kill(child, SIGKILL); /* there will be no reply */
    waitpid(child, NULL, 0);
    return WITHDRAWN;
}

static enum outcome call_in_child(long long end, struct request *request)
{
    enum outcome outcome = FAILED;
    int ends[2];
    pid_t child;

    if (pipe(ends) != 0)
        return FAILED;
    fflush(NULL); /* or the child would print again what is pending */
    child = fork();
    if (child == 0)
        run_child(request, ends[1]);
    close(ends[1]);
    if (child != -1)
        outcome = wait_for_child(child, ends[0], end, request);
    close(ends[0]);
    return outcome;
}

enum outcome request_within(int seconds, struct request *request)
{
    const int replies =
        request->queue == CMIF_AT_REQUEST_KEY ? CMIF_AT_REPLY_KEY : CMIF_QMI_REPLY_KEY;
    const long long end = now() + seconds * 1000LL; /* for lock and call together */
    enum outcome outcome;
    char path[64];
    int lock;

    snprintf(path, sizeof path, "/tmp/cmif-request-%d-%d.lock", request->queue, request->code);
    lock = open(path, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (lock == -1)
        return errno == EACCES ? OTHER_USER : FAILED;
    if (!take_lock(lock, end))
        outcome = BUSY;
    else {
        while (take_record(replies, request->code)) {} /* of callers that have gone */
        outcome = call_in_child(end, request);
    }
    close(lock);
    return outcome;
}
