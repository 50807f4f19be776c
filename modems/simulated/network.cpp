#include "network.h"

#include "daemons/digits.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace sim
{

using namespace daemons;

namespace
{

using namespace std::chrono_literals;

constexpr auto registration_time = 3s;

// In the order in which automatic selection prefers them. All codes are reserved for tests (MCC
// 001) and for private networks (MCC 999).
constexpr Cell cells[] = {
    {"001",
     "01",
     "Test Network",
     "Test",
     eutran,
     false,
     "1A2B",
     "01A2D003",
     "LTE BAND 3",
     "1300",
     {-63, -92, -9, 15}},
    {"001",
     "01",
     "Test Network",
     "Test",
     utran,
     false,
     "1A2C",
     "0011A2C7",
     "WCDMA 2100",
     "10700",
     {-75, 0, 0, 0}},
    {"001",
     "02",
     "Second Test Network",
     "Second",
     eutran,
     false,
     "2B01",
     "02B01001",
     "LTE BAND 20",
     "6300",
     {-77, -106, -12, 7}},
    {"001",
     "03",
     "Closed Test Network",
     "Closed",
     eutran,
     true,
     "3C01",
     "03C01001",
     "LTE BAND 7",
     "3100",
     {-70, -99, -11, 10}},
    {"999",
     "70",
     "Private Campus",
     "Campus",
     utran,
     false,
     "4D01",
     "004D0101",
     "WCDMA 900",
     "2963",
     {-81, 0, 0, 0}},
    {"999",
     "71",
     "Harbour Test",
     "Harbour",
     gsm,
     false,
     "5E01",
     "00005E01",
     "GSM 900",
     "62",
     {-85, 0, 0, 0}},
};

bool of_search_mode(Technology technology, SearchMode mode)
{
    switch (mode) {
    case SearchMode::gsm_only:
        return technology == gsm;
    case SearchMode::utran_only:
        return technology == utran;
    case SearchMode::eutran_only:
        return technology == eutran;
    case SearchMode::any:
        break;
    }
    return true;
}

} // namespace

bool Network::in_search_mode(const Cell &cell) const
{
    return of_search_mode(cell.technology, search_mode_);
}

bool Network::permitted(const Cell &cell) const
{
    const bool abroad = cell.mcc != home_.substr(0, 3);
    return !cell.forbidden && (roaming_ != Roaming::off || !abroad);
}

RetCode Network::select(std::string_view numeric, std::string_view technology)
{
    const std::optional<int> act = to_number(technology);
    if (!is_plmn_code(numeric))
        return ret_incorrect_parameters;
    if (!technology.empty() && (!act || *act < 0 || *act > 7))
        return ret_incorrect_parameters;

    RetCode refusal = ret_no_network_service;
    for (const Cell &cell : cells) {
        if (cell.numeric() != numeric || (act && *act != cell.technology))
            continue;
        if (!in_search_mode(cell))
            continue;
        if (permitted(cell)) {
            manual_ = Selection{std::string(numeric), act};
            return ret_ok;
        }
        refusal = ret_network_not_allowed;
    }
    return refusal;
}

const Cell *Network::wanted() const
{
    const auto suits = [this](const Cell &cell) {
        if (!in_search_mode(cell) || !permitted(cell))
            return false;
        if (!manual_)
            return true;
        return cell.numeric() == manual_->numeric &&
               manual_->technology.value_or(cell.technology) == cell.technology;
    };
    const Cell *found = std::find_if(std::begin(cells), std::end(cells), suits);
    return found == std::end(cells) ? nullptr : found;
}

// The old cell is left at once; the new one is registered with after a while.
void Network::update(bool service, Clock::time_point now)
{
    service_ = service;
    const Cell *target = service ? wanted() : nullptr;
    if (target != aim_) {
        aim_ = target;
        serving_ = nullptr;
        registered_at_ = now + pace_.of(registration_time);
    }
    if (aim_ && now >= registered_at_)
        serving_ = last_ = aim_;
}

std::optional<Clock::time_point> Network::due() const
{
    if (!aim_ || serving_)
        return std::nullopt;
    return registered_at_;
}

Registration Network::registration() const
{
    if (!service_)
        return Registration::none;
    if (serving_)
        return serving_->numeric() == home_ ? Registration::home : Registration::roaming;
    return manual_ && !aim_ ? Registration::denied : Registration::searching;
}

std::string Network::provider_entry(const Cell &cell) const
{
    const char *status = &cell == serving_ ? "2" : (cell.forbidden ? "3" : "1");
    std::string entry = "(";
    entry += status;
    entry.append(",\"").append(cell.long_name).append("\",\"").append(cell.short_name);
    entry.append("\",\"").append(cell.numeric()).append("\",");
    entry.append(std::to_string(cell.technology)).append(")");
    return entry;
}

// Shortest entry first: a reader that reuses one buffer for all entries, without clearing it, would
// find the rest of a longer entry behind a shorter one.
std::string Network::provider_list() const
{
    std::vector<std::string> entries;
    for (const Cell &cell : cells)
        entries.push_back(provider_entry(cell));
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto &one, const auto &other) { return one.size() < other.size(); });

    std::string list = "+COPS: ";
    for (const std::string &entry : entries) {
        if (&entry != &entries.front())
            list += ',';
        list += entry;
    }
    return list += '\n';
}

} // namespace sim
