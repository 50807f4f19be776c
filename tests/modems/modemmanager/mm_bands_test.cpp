// Bands by their channels, as 3GPP TS 36.101, 25.101 and 45.005 number them.
#include "modems/modemmanager/band.h"

#include <gtest/gtest.h>

namespace
{

using namespace modem_manager;

struct Band {
    int number;
    long long first, last;
};

// clang-format off
constexpr Band lte_bands[] = {
    {1, 0, 599},           {2, 600, 1199},        {3, 1200, 1949},       {4, 1950, 2399},
    {5, 2400, 2649},       {6, 2650, 2749},       {7, 2750, 3449},       {8, 3450, 3799},
    {9, 3800, 4149},       {10, 4150, 4749},      {11, 4750, 4949},      {12, 5010, 5179},
    {13, 5180, 5279},      {14, 5280, 5379},      {17, 5730, 5849},      {18, 5850, 5999},
    {19, 6000, 6149},      {20, 6150, 6449},      {21, 6450, 6599},      {22, 6600, 7399},
    {23, 7500, 7699},      {24, 7700, 8039},      {25, 8040, 8689},      {26, 8690, 9039},
    {27, 9040, 9209},      {28, 9210, 9659},      {29, 9660, 9769},      {30, 9770, 9869},
    {31, 9870, 9919},      {32, 9920, 10359},     {33, 36000, 36199},    {34, 36200, 36349},
    {35, 36350, 36949},    {36, 36950, 37549},    {37, 37550, 37749},    {38, 37750, 38249},
    {39, 38250, 38649},    {40, 38650, 39649},    {41, 39650, 41589},    {42, 41590, 43589},
    {43, 43590, 45589},    {44, 45590, 46589},    {45, 46590, 46789},    {46, 46790, 54539},
    {47, 54540, 55239},    {48, 55240, 56739},    {65, 65536, 66435},    {66, 66436, 67335},
    {71, 68586, 68935},
};
// clang-format on

TEST(MmBands, OfLte)
{
    for (const Band &band : lte_bands) {
        const std::string name = "LTE BAND " + std::to_string(band.number);
        const std::string duplex = band.number >= 33 && band.number <= 48 ? "TDD" : "FDD";
        for (const long long channel : {band.first, band.last}) {
            EXPECT_EQ(lte_cell(channel).band, name);
            EXPECT_EQ(lte_cell(channel).duplex, duplex) << name;
            EXPECT_EQ(lte_cell(channel).channel, std::to_string(channel));
        }
    }
    for (const long long channel :
         {-1, 4950, 5009, 7400, 10360, 35999, 56740, 60000, 68585, 68936}) {
        EXPECT_EQ(lte_cell(channel).band, "") << channel;
        EXPECT_EQ(lte_cell(channel).duplex, "") << channel;
    }
    EXPECT_EQ(lte_cell(std::nullopt).channel, "");
}

TEST(MmBands, OfUmtsAndGsm)
{
    const struct {
        CellInfo (*of)(std::optional<long long>);
        long long first, last;
        const char *band;
    } rows[] = {
        {umts_cell, 10562, 10838, "WCDMA 2100"},
        {umts_cell, 9662, 9938, "WCDMA 1900"},
        {umts_cell, 4357, 4458, "WCDMA 850"},
        {umts_cell, 2937, 3088, "WCDMA 900"},
        {umts_cell, 1537, 1738, "WCDMA 1700"},
        {gsm_cell, 0, 124, "GSM 900"},
        {gsm_cell, 128, 251, "GSM 850"},
        {gsm_cell, 975, 1023, "GSM 900"},
        {gsm_cell, 512, 885, ""}, // 1800 or 1900
    };
    for (const auto &row : rows)
        for (const auto &[channel, band] :
             {std::pair(row.first - 1, ""), std::pair(row.first, row.band),
              std::pair(row.last, row.band), std::pair(row.last + 1, "")}) {
            EXPECT_EQ(row.of(channel).band, band) << channel;
            EXPECT_EQ(row.of(channel).channel, std::to_string(channel));
            EXPECT_EQ(row.of(channel).duplex, "");
        }
    EXPECT_EQ(gsm_cell(std::nullopt).channel, "");
}

} // namespace
