/* Two POSIX message queues, one in each direction. */
#include "peer.h"

#include <fcntl.h>
#include <mqueue.h>

#define REQUESTS "/cmif-bench-requests"
#define ANSWERS  "/cmif-bench-answers"

static mqd_t requests, answers;

static mqd_t open_queue(const char *name)
{
    struct mq_attr size = {0};
    size.mq_maxmsg = 10;
    size.mq_msgsize = record_size;
    return mq_open(name, O_RDWR | O_CREAT, 0600, &size);
}

static int start(void)
{
    requests = open_queue(REQUESTS);
    answers = open_queue(ANSWERS);
    return requests == (mqd_t)-1 || answers == (mqd_t)-1;
}

static void serve(void)
{
    char record[record_size];
    mq_unlink(REQUESTS);
    mq_unlink(ANSWERS);
    if (start())
        return;
    ready();
    while (mq_receive(requests, record, sizeof record, 0) == record_size)
        mq_send(answers, record, sizeof record, 0);
}

static int call(void)
{
    char record[record_size] = {0};
    return mq_send(requests, record, sizeof record, 0) != 0 ||
           mq_receive(answers, record, sizeof record, 0) != record_size;
}

static void stop(void)
{
    mq_close(requests);
    mq_close(answers);
}

const struct Peer peer = {serve, start, call, stop};
