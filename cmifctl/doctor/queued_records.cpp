#include "daemons/at_forms.h"
#include "daemons/qmi_forms.h"
#include "snapshot.h"

#include <algorithm>
#include <iterator>

namespace cmifctl
{

bool is_known(Channel channel, long code)
{
    return channel == Channel::at ? daemons::find_at_form(code) != nullptr
                                  : daemons::find_qmi_form(code) != nullptr;
}

std::vector<long> codes_of(const std::vector<QueuedRecord> &records)
{
    std::vector<long> codes;
    for (const QueuedRecord &record : records)
        if (codes.empty() || codes.back() != record.code)
            codes.push_back(record.code);
    return codes;
}

std::string listed(const std::vector<QueuedRecord> &records, const std::string &what)
{
    const std::string several =
        what.ends_with('y') ? what.substr(0, what.size() - 1) + "ies" : what + "s";
    std::string text =
        std::to_string(records.size()) + " " + (records.size() == 1 ? what : several) + ", of code";
    const std::vector<long> codes = codes_of(records);
    text += codes.size() == 1 ? "" : "s";
    for (const long code : codes)
        text += (code == codes.front() ? " " : ", ") + std::to_string(code);
    return text;
}

std::vector<QueuedRecord> some_of(const std::vector<QueuedRecord> &records,
                                  const std::function<bool(const QueuedRecord &)> &wanted)
{
    std::vector<QueuedRecord> some;
    std::copy_if(records.begin(), records.end(), std::back_inserter(some), wanted);
    return some;
}

} // namespace cmifctl
