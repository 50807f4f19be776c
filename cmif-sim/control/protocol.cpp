#include "protocol.h"

#include "box_sockets.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <list>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

constexpr std::string_view greeting = "cmif-sim\n";
constexpr std::size_t max_question = 1 << 20;

class Connection
{
public:
    explicit Connection(int file) : file_(file) {}
    ~Connection()
    {
        shutdown(file_, SHUT_RDWR); // also for copies that a new process may have for a moment
        close(file_);
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    void limit(int seconds) const
    {
        const timeval time{seconds, 0};
        setsockopt(file_, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
        setsockopt(file_, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
    }
    int file() const { return file_; }
    bool send(std::string_view text) const
    {
        while (!text.empty()) {
            const ssize_t size = ::send(file_, text.data(), text.size(), MSG_NOSIGNAL);
            if (size == -1 && errno != EINTR)
                return false;
            text.remove_prefix(size == -1 ? 0 : static_cast<std::size_t>(size));
        }
        return true;
    }
    // The next `size` bytes; fewer at the end, or after an error.
    std::string read(std::size_t size) const
    {
        std::string text;
        char part[4096];
        while (text.size() < size) {
            const ssize_t got = recv(file_, part, std::min(sizeof part, size - text.size()), 0);
            if (got == -1 && errno == EINTR)
                continue;
            if (got <= 0)
                break;
            text.append(part, static_cast<std::size_t>(got));
        }
        return text;
    }
    void end_questions() const { shutdown(file_, SHUT_WR); }

private:
    int file_;
};

using Time = std::chrono::steady_clock::time_point;
constexpr std::chrono::seconds silence{5}; // with a program that is silent

// A program that has connected, and what it has sent so far.
struct Client {
    explicit Client(int file) : connection(file) {}

    Connection connection;
    Time since = std::chrono::steady_clock::now();
    std::string text{};
    bool gone = false;

    // Takes what has arrived; true when the program has asked all.
    bool take()
    {
        char part[4096];
        const ssize_t got = recv(connection.file(), part, sizeof part, MSG_DONTWAIT);
        gone = got == -1 && errno != EINTR && errno != EAGAIN;
        text.append(part, got > 0 ? static_cast<std::size_t>(got) : 0);
        return got == 0 || text.size() >= max_question;
    }
};

// Takes the first line off a text.
std::string take_line(std::string &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line = text.substr(0, end);
    text.erase(0, end + 1);
    return line;
}

// For a program that enters the router's box.
std::string environment()
{
    std::string text;
    for (const char *name : {"CMIF_STORE", "CMIF_STORE_OF_RUN", "CMIF_SANDBOX", "PATH"})
        if (const char *value = std::getenv(name))
            text.append(name).append("=").append(value).append("\n");
    return text;
}

} // namespace

// The programs that are connected, each of which gets its answer when it has asked.
class ControlServer::Clients
{
public:
    void add_to(std::vector<pollfd> &files) const
    {
        for (const Client &client : clients_)
            files.push_back({client.connection.file(), POLLIN, 0});
    }
    void accept(int listening)
    {
        const int file = accept4(listening, nullptr, nullptr, SOCK_CLOEXEC);
        if (file == -1)
            return;
        Client &client = clients_.emplace_back(file);
        client.connection.limit(static_cast<int>(silence.count()));
        client.gone = !client.connection.send(greeting);
    }
    void serve(const ControlServer &server)
    {
        for (Client &client : clients_)
            if (client.take()) {
                reply(server, client);
                client.gone = true;
            }
        const Time end = std::chrono::steady_clock::now() - silence;
        clients_.remove_if(
            [end](const Client &client) { return client.gone || client.since < end; });
    }
    bool empty() const { return clients_.empty(); }

private:
    static void reply(const ControlServer &server, Client &client)
    {
        if (client.text.empty())
            return;
        const std::string question = take_line(client.text);
        const Answer answer = server.answer(question, client.text);
        client.connection.send(std::to_string(answer.status) + "\n" + answer.text);
    }

    std::list<Client> clients_;
};

ControlServer::ControlServer(std::vector<int> listening, Replies replies)
    : listening_(std::move(listening)), replies_(std::move(replies))
{
    if (pipe2(end_, O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    thread_ = std::thread([this] { run(); });
}

ControlServer::~ControlServer()
{
    close(end_[1]);
    thread_.join();
    close(end_[0]);
}

void ControlServer::run()
{
    constexpr int interval = 1000; // milliseconds, after which a silent program may be left
    Clients clients;
    for (;;) {
        std::vector<pollfd> files{{end_[0], POLLIN, 0}};
        for (const int file : listening_)
            files.push_back({file, POLLIN, 0});
        clients.add_to(files);
        poll(files.data(), files.size(), clients.empty() ? -1 : interval);
        if (files.front().revents != 0)
            return;
        clients.serve(*this);
        for (std::size_t i = 0; i < listening_.size(); ++i)
            if (files[i + 1].revents != 0)
                clients.accept(listening_[i]);
    }
}

Answer ControlServer::answer(const std::string &question, const std::string &lines) const
{
    if (question == "run")
        return replies_.run(lines);
    if (question == "status")
        return {0, text_of(replies_.status())};
    if (question == "status-json")
        return {0, json_of(replies_.status(), std::atoi(lines.c_str()))};
    if (question == "environment")
        return {0, environment()};
    return {2, "unknown question\n"};
}

Answer ask_box(pid_t box, const std::string &question, const std::string &lines)
{
    constexpr int patience = 10; // seconds, while another program's commands are carried out
    const Connection connection(connect_to_box(box));
    connection.limit(patience);
    if (connection.read(greeting.size()) != greeting)
        throw std::runtime_error("the router of process " + std::to_string(box) +
                                 " does not respond");
    connection.limit(0); // a command may take long
    connection.send(question + "\n" + lines);
    connection.end_questions();
    std::string answer = connection.read(max_question);
    const std::string status = take_line(answer);
    if (status.size() != 1)
        throw std::runtime_error("the router of process " + std::to_string(box) + " has ended");
    return {status[0] - '0', answer};
}

} // namespace cmif_sim
