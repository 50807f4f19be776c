// A simulated modem for a test: a server in its own process, the real queues, a fresh store.
#ifndef TESTS_SUPPORT_AT_SERVER_H
#define TESTS_SUPPORT_AT_SERVER_H

#include "answers.h"
#include "child.h"
#include "cmif-sim/router/router.h"
#include "cmif/cmif.h"
#include "store_directory.h"

#include <chrono>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/msg.h>
#include <thread>

// A running server. Its standard error is kept.
class Server
{
public:
    explicit Server(const cmif_sim::ServerOptions &options)
    {
        if (pipe2(pipe_, O_CLOEXEC) != 0)
            throw std::system_error(errno, std::generic_category(), "pipe");
        child_.emplace([this, options] { std::exit(cmif_sim::serve(options, pipe_[1])); });
        errors_.restore();
        close(pipe_[1]);
        char byte = 1;
        ready_ = read(pipe_[0], &byte, 1) == 1 && byte == 0;
    }
    ~Server() { close(pipe_[0]); }
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    bool ready() const { return ready_; }
    Child &process() { return *child_; }
    std::string errors() const { return errors_.bytes(); }
    int end(int signal)
    {
        child_->signal(signal);
        return child_->wait();
    }

private:
    Redirect errors_{STDERR_FILENO};
    int pipe_[2] = {-1, -1};
    std::optional<Child> child_;
    bool ready_ = false;
};

struct Fields {
    std::string string1 = "", string2 = "", string3 = "", value = "";
};

// As much of the text as the field holds; a text that fills it has no NUL.
template <std::size_t size>
void fill(char (&field)[size], const std::string &text)
{
    std::memcpy(field, text.data(), std::min(size, text.size()));
}

inline cmif_msg record_of(long code, const Fields &fields)
{
    cmif_msg record{};
    record.mod_id = code;
    fill(record.set_string, fields.string1);
    fill(record.set_string2, fields.string2);
    fill(record.set_string3, fields.string3);
    fill(record.set_value, fields.value);
    record.ret_code = 77; // means nothing in a request
    return record;
}

class AtServer : public HostStore
{
protected:
    static cmif_sim::ServerOptions quick()
    {
        cmif_sim::ServerOptions options;
        options.qmi = false;
        options.pace = 0;
        return options;
    }
    void start(const cmif_sim::ServerOptions &options = quick())
    {
        server.emplace(options);
        ASSERT_TRUE(server->ready()) << server->errors();
    }

    static int requests() { return msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666); }
    static int replies() { return msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666); }

    static void send(const cmif_msg &record, std::size_t payload = CMIF_AT_PAYLOAD)
    {
        ASSERT_EQ(msgsnd(requests(), &record, payload, 0), 0);
    }
    static std::optional<int> reply(long code,
                                    std::chrono::milliseconds patience = std::chrono::seconds(10))
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        do {
            cmif_msg record{};
            const ssize_t size = msgrcv(replies(), &record, CMIF_AT_PAYLOAD, code, IPC_NOWAIT);
            if (size == CMIF_AT_PAYLOAD)
                return record.ret_code;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        } while (std::chrono::steady_clock::now() < end);
        return std::nullopt;
    }
    static int ask(long code, const Fields &fields = {})
    {
        send(record_of(code, fields));
        return reply(code).value_or(-999);
    }
    static int set_functionality(int level)
    {
        return ask(22, {std::string(1, static_cast<char>(level))});
    }
    static void unlock() { ASSERT_EQ(ask(12, {"1234"}), 0); }

    static bool eventually_equals(const std::string &key, const std::string &value)
    {
        for (int i = 0; i < 5000; ++i) {
            if (get(key) == value)
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }

    std::optional<Server> server;
};

#endif
