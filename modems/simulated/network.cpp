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
// 001) and for private networks (MCC 999). The forbidden one is last: nothing is ever served by it.
// clang-format off
constexpr Cell cells[] = {
    // MCC   MNC   long name              short name technology          LAC     cell identity band           channel  RSSI RSRP  RSRQ SINR
    {"001", "01", "Test Network",        "Test",    eutran, open_to_us, "1A2B", "01A2D003",   "LTE BAND 3",  "1300",  {-63,  -92,  -9, 15}},
    {"001", "01", "Test Network",        "Test",    utran,  open_to_us, "1A2C", "0011A2C7",   "WCDMA 2100",  "10700", {-75,    0,   0,  0}},
    {"001", "02", "Second Test Network", "Second",  eutran, open_to_us, "2B01", "02B01001",   "LTE BAND 20", "6300",  {-77, -106, -12,  7}},
    {"999", "70", "Private Campus",      "Campus",  utran,  open_to_us, "4D01", "004D0101",   "WCDMA 900",   "2963",  {-81,    0,   0,  0}},
    {"999", "71", "Harbour Test",        "Harbour", gsm,    open_to_us, "5E01", "00005E01",   "GSM 900",     "62",    {-85,    0,   0,  0}},
    {"001", "03", "Closed Test Network", "Closed",  eutran, forbidden},
};

// The neighbour of each open cell, to which a handover leads.
constexpr Cell neighbours[] = {
    {"001", "01", "Test Network",        "Test",    eutran, open_to_us, "1A2B", "01A2E107",   "LTE BAND 20", "6200",  {-71,  -99, -10, 11}},
    {"001", "01", "Test Network",        "Test",    utran,  open_to_us, "1A2C", "0011A2D8",   "WCDMA 900",   "2988",  {-79,    0,   0,  0}},
    {"001", "02", "Second Test Network", "Second",  eutran, open_to_us, "2B01", "02B02105",   "LTE BAND 3",  "1650",  {-80, -109, -13,  5}},
    {"999", "70", "Private Campus",      "Campus",  utran,  open_to_us, "4D01", "004D0212",   "WCDMA 2100",  "10638", {-84,    0,   0,  0}},
    {"999", "71", "Harbour Test",        "Harbour", gsm,    open_to_us, "5E01", "00005E12",   "GSM 1800",    "700",   {-88,    0,   0,  0}},
};
// clang-format on
static_assert(std::size(neighbours) + 1 == std::size(cells) && std::rbegin(cells)->forbidden);

const Cell *neighbour_of(const Cell *cell)
{
    return &neighbours[cell - cells];
}

} // namespace

bool Network::in_reach(const Cell &cell) const
{
    if (!local_plmn_.empty() && cell.plmn() != local_plmn_)
        return false;
    switch (coverage_) {
    case Coverage::none:
        return false;
    case Coverage::eutran_only:
        return cell.technology == eutran;
    case Coverage::utran_only:
        return cell.technology == utran;
    case Coverage::gsm_only:
        return cell.technology == gsm;
    case Coverage::full:
        break;
    }
    return true;
}

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
        if (!in_reach(cell))
            continue;
        if (cell.plmn() != plmn || technology.value_or(cell.technology) != cell.technology)
            continue;
        if (!matches_search_mode(cell))
            continue;
        if (permitted(cell) && !denied_) {
            manual_ = Selection{std::string(plmn), technology};
            deregistered_ = false;
            return CmeError::ok;
        }
        refusal = CmeError::network_not_allowed;
    }
    return refusal;
}

void Network::select_automatically()
{
    manual_.reset();
    deregistered_ = false;
}

bool Network::selectable(const Cell &cell) const
{
    if (!in_reach(cell) || !matches_search_mode(cell) || !permitted(cell))
        return false;
    if (!manual_)
        return true;
    return cell.plmn() == manual_->plmn &&
           manual_->technology.value_or(cell.technology) == cell.technology;
}

// The SIM's own network comes first.
const Cell *Network::pick_cell() const
{
    const Cell *found = nullptr;
    for (const Cell &cell : cells)
        if (selectable(cell) && (!found || (found->plmn() != home_ && cell.plmn() == home_)))
            found = &cell;
    return found;
}

// The old cell is left at once; registration with the new one takes a while.
void Network::update(bool service, Time now)
{
    service_ = service;
    const Cell *target = service && !denied_ && !deregistered_ ? pick_cell() : nullptr;
    if (target != target_) {
        target_ = target;
        serving_ = nullptr;
        registered_at_ = now + scale_.scaled(registration_time);
    }
    if (target_ && !serving_ && now >= registered_at_)
        serving_ = last_ = target_;
}

void Network::reset_settings()
{
    search_mode_ = SearchMode::any;
    roaming_ = Roaming::automatic;
    select_automatically();
    leave();
    last_ = nullptr;
}

void Network::leave()
{
    target_ = serving_ = nullptr;
}

// A choice of the user's stays as long as it leads to a network.
void Network::register_now(Time now)
{
    coverage_ = Coverage::full;
    denied_ = deregistered_ = false;
    update(true, now);
    if (!target_) {
        local_plmn_.clear();
        manual_.reset();
        search_mode_ = SearchMode::any;
        update(true, now);
    }
    registered_at_ = now;
    update(true, now);
}

bool Network::handover()
{
    if (!serving_)
        return false;
    serving_ = last_ = serving_ == target_ ? neighbour_of(target_) : target_;
    return true;
}

std::vector<std::string> Network::plmns()
{
    std::vector<std::string> all;
    for (const Cell &cell : cells)
        if (all.empty() || all.back() != cell.plmn())
            all.push_back(cell.plmn());
    return all;
}

std::optional<Time> Network::next_deadline() const
{
    if (!target_ || serving_)
        return std::nullopt;
    return registered_at_;
}

Registration Network::registration() const
{
    if (!service_ || deregistered_)
        return Registration::none;
    if (serving_)
        return serving_->plmn() == home_ ? Registration::home : Registration::roaming;
    const bool all_in_reach = coverage_ == Coverage::full && local_plmn_.empty();
    const bool refused = denied_ || (manual_ && !target_ && all_in_reach);
    return refused ? Registration::denied : Registration::searching;
}

std::vector<Operator> Network::operators() const
{
    std::vector<Operator> found;
    for (const Cell &cell : cells) {
        if (!in_reach(cell))
            continue;
        const OperatorState state =
            cell.forbidden ? OperatorState::forbidden : OperatorState::available;
        found.push_back({serving_ && &cell == target_ ? OperatorState::current : state,
                         std::string(cell.long_name), std::string(cell.short_name), cell.plmn(),
                         cell.technology});
    }
    return found;
}

} // namespace simulated
