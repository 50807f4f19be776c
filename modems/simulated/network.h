// The mobile network around the modem: operators in reach, selection, registration.
#ifndef MODEMS_SIMULATED_NETWORK_H
#define MODEMS_SIMULATED_NETWORK_H

#include "daemons/modem_status.h"
#include "scenario/time_scale.h"

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
    int rssi = 0, rsrp = 0, rsrq = 0, sinr = 0;
};

// One operator on one technology, and its nearest cell.
struct Cell {
    std::string_view mcc, mnc;
    std::string_view long_name, short_name; // at most 19 characters fit the summary's fields
    Technology technology;
    bool forbidden;
    std::string_view lac{}, cell_id{}, band{}, channel{};
    SignalMeans means{};

    std::string plmn() const { return std::string(mcc) += mnc; }
};

using scenario::Duration;
using scenario::Time;
using scenario::TimeScale;

// Of which technologies there are cells in reach.
enum class Coverage { full, none, eutran_only, utran_only, gsm_only };

class Network
{
public:
    Network(TimeScale scale, std::string_view home) : scale_(scale), home_(home) {}

    // Where the modem is. These show with the next update().
    void set_coverage(Coverage coverage) { coverage_ = coverage; }
    void move_to(std::string plmn)
    {
        local_plmn_ = std::move(plmn);
    }                                                      // "": all networks are in reach
    void set_denied(bool denied) { denied_ = denied; }     // by every network
    void set_home(std::string_view home) { home_ = home; } // of another SIM
    void reset_settings();                                 // and forget the last cell
    void leave();                                          // the cell; registration begins again
    bool handover();                         // to the neighbouring cell; false when not registered
    void register_now(Time now);             // whatever prevents it goes
    static std::vector<std::string> plmns(); // all that there are

    // Registers with one operator, on any technology if none is given. A refusal changes nothing.
    CmeError select(std::string_view plmn, std::optional<Technology> technology);
    void select_automatically();
    void deregister() { deregistered_ = true; } // from every network, until the next selection
    void set_search_mode(SearchMode mode) { search_mode_ = mode; }
    void set_roaming(Roaming roaming) { roaming_ = roaming; }

    // Brings registration up to date; called after each change, and at the deadline. Without
    // `service` (SIM and radio) there is none.
    void update(bool service, Time now);
    std::optional<Time> next_deadline() const;

    const Cell *serving() const { return serving_; }
    const Cell *last() const { return last_; } // the serving cell, or the last one
    Registration registration() const;
    bool automatic() const { return !manual_; }
    bool deregistered() const { return deregistered_; }
    bool denied() const { return denied_; }
    SearchMode search_mode() const { return search_mode_; }
    Roaming roaming() const { return roaming_; }

    // All operators in reach.
    std::vector<Operator> operators() const;

private:
    struct Selection {
        std::string plmn;
        std::optional<Technology> technology;
    };

    bool in_reach(const Cell &cell) const;
    bool matches_search_mode(const Cell &cell) const;
    bool permitted(const Cell &cell) const;
    bool selectable(const Cell &cell) const;
    const Cell *pick_cell() const;

    TimeScale scale_;
    std::string_view home_;
    Coverage coverage_ = Coverage::full;
    std::string local_plmn_;
    bool denied_ = false, deregistered_ = false;
    SearchMode search_mode_ = SearchMode::any;
    Roaming roaming_ = Roaming::automatic;
    std::optional<Selection> manual_;
    bool service_ = false;
    const Cell *serving_ = nullptr; // the target or its neighbour
    const Cell *last_ = nullptr;
    const Cell *target_ = nullptr; // the cell to register with, or registered with
    Time registered_at_{};
};

} // namespace simulated

#endif
