#include "network.h"

#include <algorithm>
#include <iterator>

namespace simulated
{
namespace
{

using daemons::OperatorState;
using namespace std::chrono_literals;
using enum Technology;

constexpr auto registration_time = 3s;

constexpr bool open_to_us = false, forbidden = true;

// In the order in which automatic selection prefers them. All codes are reserved for tests (MCC
// 001) and for private networks (MCC 999).
// clang-format off
constexpr Cell cells[] = {
    // MCC   MNC   long name              short name technology          LAC     cell identity band           channel  RSSI RSRP  RSRQ SINR
    {"001", "01", "Test Network",        "Test",    eutran, open_to_us, "1A2B", "01A2D003",   "LTE BAND 3",  "1300",  {-63,  -92,  -9, 15}},
    {"001", "01", "Test Network",        "Test",    utran,  open_to_us, "1A2C", "0011A2C7",   "WCDMA 2100",  "10700", {-75,    0,   0,  0}},
    {"001", "02", "Second Test Network", "Second",  eutran, open_to_us, "2B01", "02B01001",   "LTE BAND 20", "6300",  {-77, -106, -12,  7}},
    {"001", "03", "Closed Test Network", "Closed",  eutran, forbidden,  "3C01", "03C01001",   "LTE BAND 7",  "3100",  {-70,  -99, -11, 10}},
    {"999", "70", "Private Campus",      "Campus",  utran,  open_to_us, "4D01", "004D0101",   "WCDMA 900",   "2963",  {-81,    0,   0,  0}},
    {"999", "71", "Harbour Test",        "Harbour", gsm,    open_to_us, "5E01", "00005E01",   "GSM 900",     "62",    {-85,    0,   0,  0}},
};
// clang-format on

} // namespace

bool Network::matches_search_mode(const Cell &cell) const
{
    switch (search_mode_) {
    case SearchMode::gsm_only:
        return cell.technology == gsm;
    case SearchMode::utran_only:
        return cell.technology == utran;
    case SearchMode::eutran_only:
        return cell.technology == eutran;
    case SearchMode::any:
        break;
    }
    return true;
}

bool Network::permitted(const Cell &cell) const
{
    const bool abroad = cell.mcc != home_.substr(0, 3);
    return !cell.forbidden && (roaming_ != Roaming::off || !abroad);
}

CmeError Network::select(std::string_view plmn, std::optional<Technology> technology)
{
    CmeError refusal = CmeError::no_network_service;
    for (const Cell &cell : cells) {
        if (cell.plmn() != plmn || technology.value_or(cell.technology) != cell.technology)
            continue;
        if (!matches_search_mode(cell))
            continue;
        if (permitted(cell)) {
            manual_ = Selection{std::string(plmn), technology};
            return CmeError::ok;
        }
        refusal = CmeError::network_not_allowed;
    }
    return refusal;
}

bool Network::selectable(const Cell &cell) const
{
    if (!matches_search_mode(cell) || !permitted(cell))
        return false;
    if (!manual_)
        return true;
    return cell.plmn() == manual_->plmn &&
           manual_->technology.value_or(cell.technology) == cell.technology;
}

const Cell *Network::pick_cell() const
{
    const Cell *found = std::find_if(std::begin(cells), std::end(cells),
                                     [this](const Cell &cell) { return selectable(cell); });
    return found == std::end(cells) ? nullptr : found;
}

// The old cell is left at once; registration with the new one takes a while.
void Network::update(bool service, Clock::time_point now)
{
    service_ = service;
    const Cell *target = service ? pick_cell() : nullptr;
    if (target != target_) {
        target_ = target;
        serving_ = nullptr;
        registered_at_ = now + scale_.scaled(registration_time);
    }
    if (target_ && now >= registered_at_)
        serving_ = last_ = target_;
}

std::optional<Clock::time_point> Network::next_deadline() const
{
    if (!target_ || serving_)
        return std::nullopt;
    return registered_at_;
}

Registration Network::registration() const
{
    if (!service_)
        return Registration::none;
    if (serving_)
        return serving_->plmn() == home_ ? Registration::home : Registration::roaming;
    return manual_ && !target_ ? Registration::denied : Registration::searching;
}

std::vector<Operator> Network::operators() const
{
    std::vector<Operator> found;
    for (const Cell &cell : cells) {
        const OperatorState state =
            cell.forbidden ? OperatorState::forbidden : OperatorState::available;
        found.push_back({&cell == serving_ ? OperatorState::current : state,
                         std::string(cell.long_name), std::string(cell.short_name), cell.plmn(),
                         cell.technology});
    }
    return found;
}

} // namespace simulated
