// The mobile network around the modem: operators in reach, selection, registration.
#ifndef MODEMS_SIMULATED_NETWORK_H
#define MODEMS_SIMULATED_NETWORK_H

#include "daemons/modem_status.h"
#include "time_scale.h"

#include <optional>
#include <string>
#include <string_view>

namespace simulated
{

using daemons::CmeError;
using daemons::Operator;
using daemons::Registration;
using daemons::Roaming;
using daemons::SearchMode;
using daemons::Technology;

// What a cell's measurements drift around.
struct SignalMeans {
    int rssi, rsrp, rsrq, sinr;
};

// One operator on one technology, and its nearest cell.
struct Cell {
    std::string_view mcc, mnc;
    std::string_view long_name, short_name; // at most 19 characters fit the summary's fields
    Technology technology;
    bool forbidden;
    std::string_view lac, cell_id, band, channel;
    SignalMeans means;

    std::string plmn() const { return std::string(mcc) += mnc; }
};

class Network
{
public:
    Network(TimeScale scale, std::string_view home) : scale_(scale), home_(home) {}

    // Registers with one operator, on any technology if none is given. A refusal changes nothing.
    CmeError select(std::string_view plmn, std::optional<Technology> technology);
    void select_automatically() { manual_.reset(); }
    void set_search_mode(SearchMode mode) { search_mode_ = mode; }
    void set_roaming(Roaming roaming) { roaming_ = roaming; }

    // Brings registration up to date; called after each change, and at the deadline. Without
    // `service` (SIM and radio) there is none.
    void update(bool service, Clock::time_point now);
    std::optional<Clock::time_point> next_deadline() const;

    const Cell *serving() const { return serving_; }
    const Cell *last() const { return last_; } // the serving cell, or the last one
    Registration registration() const;
    bool automatic() const { return !manual_; }
    SearchMode search_mode() const { return search_mode_; }
    Roaming roaming() const { return roaming_; }

    // All operators in reach.
    std::vector<Operator> operators() const;

private:
    struct Selection {
        std::string plmn;
        std::optional<Technology> technology;
    };

    bool matches_search_mode(const Cell &cell) const;
    bool permitted(const Cell &cell) const;
    bool selectable(const Cell &cell) const;
    const Cell *pick_cell() const;

    TimeScale scale_;
    std::string_view home_;
    SearchMode search_mode_ = SearchMode::any;
    Roaming roaming_ = Roaming::automatic;
    std::optional<Selection> manual_;
    bool service_ = false;
    const Cell *serving_ = nullptr;
    const Cell *last_ = nullptr;
    const Cell *target_ = nullptr; // the cell to register with, or registered with
    Clock::time_point registered_at_{};
};

} // namespace simulated

#endif
