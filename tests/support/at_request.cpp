#include "at_request.h"

#include "system_calls.h"

#include <cstring>

const AtWords common_words{
    .request_queue_failed = "cmif_common:%s msgget failed",
    .reply_queue_failed = "[%s] - msgget failed",
    .queue = "key msqid=%d",
    .code = "type mod_id=%ld",
    .send_failed = "cmif_common:%s msgsnd failed",
    .sent = "cmif_common:%s msgsnd success",
    .receive_failed = "cmif: %s msgrcv failed",
    .received = "cmif: %s msgrcv success",
};

const AtWords daemon_words{
    .request_queue_failed = "msgget failed",
    .reply_queue_failed = "[%s] - msgget failed",
    .queue = "KEY msqid=%d",
    .code = "type mod_id=%ld",
    .send_failed = "3gcm_common:%s msgsnd failed",
    .sent = "SEND SUCCESS",
    .receive_failed = "cmif: %s receive failed",
    .received = "RECEIVE SUCCESS",
};

namespace
{
const std::string print = "print ";
const std::string read_switch = "get debug_at_cmif";

void replace(std::string &line, const std::string &conversion, const std::string &value)
{
    const size_t at = line.find(conversion);
    if (at != std::string::npos)
        line.replace(at, conversion.size(), value);
}

Lines printed(const Lines &lines)
{
    Lines steps;
    for (const std::string &line : lines)
        steps.push_back(print + line);
    return steps;
}

bool is_print(const std::string &step)
{
    return step.starts_with(print);
}
} // namespace

std::string print_step(const AtRequest &request, std::string line, int queue)
{
    replace(line, "%s", request.name);
    replace(line, "%d", std::to_string(queue));
    replace(line, "%ld", std::to_string(request.code));
    return print + line;
}

std::string transfer_step(const char *function, int key, long code)
{
    return calls::transfer_step(function, std::to_string(key), code, 116);
}

std::string at_payload(const AtFields &fields)
{
    constexpr size_t last = 111; // offset of the last byte of text
    std::string payload(116, '\0');
    const auto put = [&](size_t offset, const std::optional<std::string> &text) {
        if (!text)
            return;
        const std::string cut = text->substr(0, last - offset);
        payload.replace(offset, cut.size(), cut);
        payload[offset + cut.size()] = '\0';
    };
    put(0, fields.set_string);
    put(30, fields.set_string2);
    put(60, fields.set_string3);
    put(90, fields.set_value);
    return payload;
}

std::string text_at(const std::string &payload, size_t offset)
{
    return payload.substr(offset, payload.find('\0', offset) - offset);
}

std::string at_reply(int ret_code)
{
    std::string payload(116, '\xAA');
    memcpy(payload.data() + 112, &ret_code, sizeof ret_code);
    return payload;
}

Lines steps_of(const AtRequest &request, int queue)
{
    const AtWords &words = *request.words;
    Lines steps{"msgget(899, 01666)"};
    if (request.waits)
        steps.push_back("msgget(900, 01666)");
    steps = join(
        {steps,
         {print_step(request, words.queue, queue)},
         printed(request.before_code),
         {print_step(request, words.code, queue)},
         printed(request.after_code),
         {transfer_step("msgsnd", 899, request.code), print_step(request, words.sent, queue)}});
    if (!request.waits)
        return steps;
    return join(
        {steps,
         {transfer_step("msgrcv", 900, request.code), print_step(request, words.received, queue)},
         request.follow_up});
}

Lines with_switch_reads(const Lines &steps)
{
    Lines all;
    for (const std::string &step : steps) {
        if (is_print(step))
            all.push_back(read_switch);
        all.push_back(step);
    }
    return all;
}

Lines without_switch_reads(const Lines &steps)
{
    Lines rest = steps;
    std::erase(rest, read_switch);
    return rest;
}

Lines without_prints(const Lines &steps)
{
    Lines silent = steps;
    std::erase_if(silent, is_print);
    return silent;
}

std::string output_of(const Lines &steps)
{
    std::string bytes;
    for (const std::string &step : steps)
        if (is_print(step))
            bytes += step.substr(print.size()) + '\n';
    return bytes;
}
