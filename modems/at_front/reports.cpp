#include "reports.h"

#include "contexts.h"
#include "registration.h"

namespace at_front
{
namespace
{

using Lines = std::vector<std::string>;

void add_registration(const Situation &before, const Situation &now, const Session &session,
                      Lines &lines)
{
    const struct {
        Domain domain;
        int level;
    } domains[] = {{Domain::circuits, session.creg},
                   {Domain::packets, session.cgreg},
                   {Domain::lte, session.cereg}};
    for (const auto &[domain, level] : domains) {
        const std::string text = registration_text(domain, now.status, level);
        if (level > 0 && text != registration_text(domain, before.status, level))
            lines.push_back(std::string(name_of(domain)) + ": " + text);
    }
}

void add_indicators(const Situation &before, const Situation &now, Lines &lines)
{
    for (std::size_t i = 0; i < now.indicators.size(); ++i)
        if (now.indicators.at(i) != before.indicators.at(i))
            lines.push_back("+CIEV: " + std::to_string(i + 1) + "," +
                            std::to_string(now.indicators.at(i)));
}

void add_messages(const Situation &before, const Situation &now, Lines &lines)
{
    for (const int index : now.messages)
        if (!before.messages.contains(index))
            lines.push_back("+CMTI: \"SM\"," + std::to_string(index));
}

} // namespace

Situation situation_of(const Device &device)
{
    Situation now;
    now.status = device.status();
    now.indicators = indicators_of(now.status);
    now.context = connected_context(device);
    now.down = device.inspect([&now](const ModemState &state, Time) {
        for (const daemons::Message &message : state.messages.all())
            now.messages.insert(message.index);
        return state.down();
    });
    return now;
}

Lines reports_between(const Situation &before, const Situation &now, const Session &session)
{
    Lines lines;
    if (now.down)
        return lines;
    add_registration(before, now, session, lines);
    if (session.indicators > 0)
        add_indicators(before, now, lines);
    if (session.new_messages[1] > 0)
        add_messages(before, now, lines);
    if (session.packet_events > 0 && before.context && before.context != now.context)
        lines.push_back("+CGEV: NW PDN DEACT " + std::to_string(*before.context));
    return lines;
}

} // namespace at_front
