// The mobile network around the modem: operators in reach, selection, registration.
#ifndef MODEMS_SIMULATED_NETWORK_H
#define MODEMS_SIMULATED_NETWORK_H

#include "daemons/ret_code.h"
#include "time_scale.h"

#include <optional>
#include <string>
#include <string_view>

namespace sim
{

// Access technologies in reach, by their numbers in 3GPP TS 27.007 <AcT>.
enum Technology : int { gsm = 0, utran = 2, eutran = 7 };

// What a cell's measurements wander around.
struct SignalMeans {
    int rssi, rsrp, rsrq, sinr;
};

// One operator on one technology, and the cell of it that is nearest.
struct Cell {
    std::string_view mcc, mnc;
    std::string_view long_name, short_name; // at most 19 characters fit the summary's fields
    Technology technology;
    bool forbidden;
    std::string_view lac, cell_id, band, channel;
    SignalMeans means;

    std::string numeric() const { return std::string(mcc) += mnc; }
};

enum class SearchMode { any = 0, gsm_only = 1, utran_only = 2, eutran_only = 3 };
enum class Roaming { off = 1, on = 2, automatic = 255 };
enum class Registration { none = 0, home = 1, searching = 2, denied = 3, roaming = 5 };

class Network
{
public:
    explicit Network(Pace pace, std::string_view home) : pace_(pace), home_(home) {}

    // Registers with one operator; `technology` is text, empty for any. A refusal changes nothing.
    RetCode select(std::string_view numeric, std::string_view technology);
    void select_automatically() { manual_.reset(); }
    void set_search_mode(SearchMode mode) { search_mode_ = mode; }
    void set_roaming(Roaming roaming) { roaming_ = roaming; }

    // Brings registration up to date: after each change, and when `due` has come. Without
    // `service` (SIM and radio) there is none.
    void update(bool service, Clock::time_point now);
    std::optional<Clock::time_point> due() const;

    const Cell *serving() const { return serving_; }
    const Cell *last() const { return last_; } // the serving cell, or the last one
    Registration registration() const;
    bool automatic() const { return !manual_; }
    SearchMode search_mode() const { return search_mode_; }
    Roaming roaming() const { return roaming_; }

    // All operators in reach, in the shape of the answer to AT+COPS=?.
    std::string provider_list() const;

private:
    struct Selection {
        std::string numeric;
        std::optional<int> technology;
    };

    bool in_search_mode(const Cell &cell) const;
    bool permitted(const Cell &cell) const;
    const Cell *wanted() const;
    std::string provider_entry(const Cell &cell) const;

    Pace pace_;
    std::string_view home_;
    SearchMode search_mode_ = SearchMode::any;
    Roaming roaming_ = Roaming::automatic;
    std::optional<Selection> manual_;
    bool service_ = false;
    const Cell *serving_ = nullptr;
    const Cell *last_ = nullptr;
    const Cell *aim_ = nullptr; // the cell to register with, or registered with
    Clock::time_point registered_at_{};
};

} // namespace sim

#endif
