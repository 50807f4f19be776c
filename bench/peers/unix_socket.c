/* A Unix socket that keeps records apart (SOCK_SEQPACKET), one connection for all calls. */
#include "peer.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

static const struct sockaddr_un address = {AF_UNIX, "/tmp/cmif-bench.socket"};
static int connection;

static void answer(int client)
{
    char record[record_size];
    while (recv(client, record, sizeof record, 0) == record_size)
        send(client, record, sizeof record, MSG_NOSIGNAL);
    close(client);
}

static void serve(void)
{
    const int listener = socket(AF_UNIX, SOCK_SEQPACKET, 0);
    unlink(address.sun_path);
    if (bind(listener, (const struct sockaddr *)&address, sizeof address) != 0 ||
        listen(listener, 5) != 0)
        return;
    ready();
    for (;;) {
        const int client = accept(listener, 0, 0);
        if (client == -1)
            return;
        if (fork() == 0) {
            answer(client);
            _exit(0);
        }
        close(client);
    }
}

static int start(void)
{
    connection = socket(AF_UNIX, SOCK_SEQPACKET, 0);
    return connect(connection, (const struct sockaddr *)&address, sizeof address);
}

static int call(void)
{
    char record[record_size] = {0};
    return send(connection, record, sizeof record, MSG_NOSIGNAL) != record_size ||
           recv(connection, record, sizeof record, 0) != record_size;
}

static void stop(void)
{
    close(connection);
}

const struct Peer peer = {serve, start, call, stop};
