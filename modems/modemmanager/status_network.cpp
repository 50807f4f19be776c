// The network around the modem: registration, cell, technology, modes.
#include "band.h"
#include "status.h"

#include <algorithm>

namespace modem_manager
{
namespace
{

using daemons::Cell;
using daemons::ModemStatus;
using daemons::Registration;
using daemons::SearchMode;
using daemons::Technology;

// Registered for messages alone, or without circuit switching, is registered; for emergency calls
// alone is not.
std::optional<Registration> registration(const ModemView &view)
{
    using enum Registration;
    static constexpr Registration states[] = {none, home,    searching, denied, unknown, roaming,
                                              home, roaming, denied,    home,   roaming, denied};
    const auto number = view.get(modem_3gpp, "RegistrationState").number();
    if (!number || *number < 0 || *number >= static_cast<int>(std::size(states)))
        return std::nullopt;
    return states[*number];
}

// Of those in use at the same time, the best one.
std::optional<Technology> technology(unsigned access)
{
    struct Row {
        unsigned flags;
        Technology technology;
    };
    static constexpr Row rows[] = {
        {access::lte | access::lte_cat_m | access::lte_nb_iot, Technology::eutran},
        {access::hspa | access::hspa_plus, Technology::utran_hspa},
        {access::hsupa, Technology::utran_hsupa},
        {access::hsdpa, Technology::utran_hsdpa},
        {access::umts, Technology::utran},
        {access::edge, Technology::gsm_egprs},
        {access::gsm | access::gprs, Technology::gsm},
        {access::gsm_compact, Technology::gsm_compact},
    };
    if ((access & access::hsdpa) && (access & access::hsupa))
        return Technology::utran_hspa;
    for (const Row &row : rows)
        if (access & row.flags)
            return row.technology;
    return std::nullopt;
}

constexpr std::size_t area_digits = 4, cell_digits = 8; // as +CREG and +CEREG show them

// A field of "MCC,MNC,LAC,CI,TAC" with all its digits; 0 and an LAC of FFFE stand for none.
std::string field(const std::string &text, int number, std::size_t digits)
{
    std::size_t start = 0;
    for (; number > 0 && start != std::string::npos; --number) {
        start = text.find(',', start);
        start += start != std::string::npos;
    }
    if (start == std::string::npos)
        return "";
    const std::string found = text.substr(start, text.find(',', start) - start);
    const bool none = found.find_first_not_of('0') == std::string::npos || found == "FFFE";
    if (none || found.size() >= digits)
        return none ? "" : found;
    return std::string(digits - found.size(), '0') + found;
}

std::string location_text(const ModemView &view)
{
    for (const Value &entry : view.get(location, "Location").items())
        if (entry.item(0).number() == location_source::lac_and_cell)
            return entry.item(1).text();
    return "";
}

Cell cell_of(const ModemView &view, bool on_lte)
{
    constexpr std::size_t mcc_digits = 3;
    const std::string code = view.get(modem_3gpp, "OperatorCode").text();
    const std::string text = location_text(view);
    Cell cell;
    if (code.size() > mcc_digits) {
        cell.mcc = code.substr(0, mcc_digits);
        cell.mnc = code.substr(mcc_digits);
    }
    cell.lac = field(text, on_lte ? 4 : 2, area_digits);
    if (cell.lac.empty())
        cell.lac = field(text, on_lte ? 2 : 4, area_digits);
    cell.cell_id = field(text, 3, cell_digits);
    return cell;
}

std::optional<SearchMode> search_mode(const ModemView &view)
{
    const Value current = view.get("CurrentModes").item(0);
    if (!current)
        return std::nullopt;
    const auto allowed = static_cast<unsigned>(current.number().value_or(0));
    unsigned all = 0;
    for (const Value &each : view.get("SupportedModes").items())
        all |= static_cast<unsigned>(each.item(0).number().value_or(0));
    if (allowed == mode::any || (allowed == all && all != 0))
        return SearchMode::any;
    switch (allowed) {
    case mode::gsm:
        return SearchMode::gsm_only;
    case mode::umts:
        return SearchMode::utran_only;
    case mode::lte:
        return SearchMode::eutran_only;
    default: // two of three, for example
        return std::nullopt;
    }
}

std::optional<bool> attached(const ModemView &view)
{
    switch (view.flags(modem_3gpp, "PacketServiceState")) {
    case packet_service::attached:
        return true;
    case packet_service::detached:
        return false;
    default:
        return std::nullopt;
    }
}

void add_serving_cell(const ModemView &view, const LocalState &local, ModemStatus &status)
{
    status.technology = technology(view.flags(modem, "AccessTechnologies"));
    status.cell = cell_of(view, status.technology == Technology::eutran);
    status.operator_long = view.get(modem_3gpp, "OperatorName").text();
    status.channel = local.cell_info.channel;
    status.band = local.cell_info.band;
    status.duplex = local.cell_info.duplex;
}

} // namespace

void add_network(const ModemView &view, const LocalState &local, ModemStatus &status)
{
    status.registration = registration(view);
    if (is_served(status))
        add_serving_cell(view, local, status);
    status.last_cell = status.cell.mcc.empty() ? local.last_cell : status.cell;
    status.manual_selection = local.manual_selection;
    status.search_mode = search_mode(view);
    status.roaming = local.roaming;
    status.packet_attached = attached(view);
    status.packet_domain = local.packet_domain;
    if (!status.packet_domain && (status.packet_attached == true || is_served(status)))
        status.packet_domain = status.packet_attached;
}

CellInfo cell_info_of(const Value &cells)
{
    for (const Value &each : cells.items()) {
        const Dictionary cell = each.dictionary();
        if (!find(cell, "serving").boolean().value_or(false))
            continue;
        switch (find(cell, "cell-type").number().value_or(0)) {
        case cell_type::lte:
            return lte_cell(find(cell, "earfcn").number());
        case cell_type::umts:
            return umts_cell(find(cell, "uarfcn").number());
        case cell_type::gsm:
            return gsm_cell(find(cell, "arfcn").number());
        default:
            break;
        }
    }
    return {};
}

} // namespace modem_manager
