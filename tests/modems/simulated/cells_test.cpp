// The values of all cells and their neighbours, as a modem that is registered there has them.
#include "modems/simulated/network.h"
#include "modems/simulated/sim_card.h"

#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace simulated;
using enum Technology;

struct Row {
    const char *plmn;
    Technology technology;
    const char *cell, *neighbour;
};

// clang-format off
constexpr Row rows[] = {
    //                MCC MNC long name           short   AcT           LAC  identity band        channel RSSI RSRP RSRQ SINR
    {"00101", eutran, "001|01|Test Network|       Test|   7|available|  1A2B|01A2D003|LTE BAND 3| 1300|  -63|  -92|  -9|  15",
                      "001|01|Test Network|       Test|   7|available|  1A2B|01A2E107|LTE BAND 20|6200|  -71|  -99|  -10| 11"},
    {"00101", utran,  "001|01|Test Network|       Test|   2|available|  1A2C|0011A2C7|WCDMA 2100| 10700| -75|  0|    0|   0",
                      "001|01|Test Network|       Test|   2|available|  1A2C|0011A2D8|WCDMA 900|  2988|  -79|  0|    0|   0"},
    {"00102", eutran, "001|02|Second Test Network|Second| 7|available|  2B01|02B01001|LTE BAND 20|6300|  -77|  -106| -12| 7",
                      "001|02|Second Test Network|Second| 7|available|  2B01|02B02105|LTE BAND 3| 1650|  -80|  -109| -13| 5"},
    {"99970", utran,  "999|70|Private Campus|     Campus| 2|available|  4D01|004D0101|WCDMA 900|  2963|  -81|  0|    0|   0",
                      "999|70|Private Campus|     Campus| 2|available|  4D01|004D0212|WCDMA 2100| 10638| -84|  0|    0|   0"},
    {"99971", gsm,    "999|71|Harbour Test|       Harbour|0|available|  5E01|00005E01|GSM 900|    62|    -85|  0|    0|   0",
                      "999|71|Harbour Test|       Harbour|0|available|  5E01|00005E12|GSM 1800|   700|   -88|  0|    0|   0"},
};
// clang-format on

// In the form of the rows, without the spaces that align their columns.
std::string text(const Cell &cell)
{
    std::ostringstream text;
    text << cell.mcc << '|' << cell.mnc << '|' << cell.long_name << '|' << cell.short_name << '|'
         << static_cast<int>(cell.technology) << '|' << (cell.forbidden ? "forbidden" : "available")
         << '|' << cell.lac << '|' << cell.cell_id << '|' << cell.band << '|' << cell.channel << '|'
         << cell.means.rssi << '|' << cell.means.rsrp << '|' << cell.means.rsrq << '|'
         << cell.means.sinr;
    return text.str();
}

std::string without_alignment(std::string row)
{
    for (std::size_t bar = row.find('|'); bar != std::string::npos; bar = row.find('|', bar + 1))
        row.erase(bar + 1, row.find_first_not_of(' ', bar + 1) - bar - 1);
    return row;
}

TEST(Cells, HaveTheirValuesAndNeighbours)
{
    for (const Row &row : rows) {
        Network network(TimeScale(0), first_sim.home_network);
        ASSERT_EQ(network.select(row.plmn, row.technology), CmeError::ok) << row.plmn;
        network.update(true, {});
        ASSERT_NE(network.serving(), nullptr) << row.plmn;
        EXPECT_EQ(text(*network.serving()), without_alignment(row.cell));
        ASSERT_TRUE(network.handover());
        EXPECT_EQ(text(*network.serving()), without_alignment(row.neighbour));
        ASSERT_TRUE(network.handover());
        EXPECT_EQ(text(*network.serving()), without_alignment(row.cell));
    }
}

// The forbidden operator has no row: no modem is ever served by it.
TEST(Cells, HaveARowForEachOperatorThatServes)
{
    Network network(TimeScale(0), first_sim.home_network);
    std::size_t serving = 0;
    for (const daemons::Operator &found : network.operators()) {
        const bool refuses = network.select(found.plmn, found.technology) != CmeError::ok;
        EXPECT_EQ(refuses, found.state == daemons::OperatorState::forbidden) << found.plmn;
        serving += refuses ? 0 : 1;
    }
    EXPECT_EQ(serving, std::size(rows));
}

} // namespace
