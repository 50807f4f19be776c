#include "band.h"

namespace modem_manager
{
namespace
{

struct LteBand {
    long long first, last; // downlink EARFCN
    int number;
};

// clang-format off
constexpr LteBand lte_bands[] = {
    {0,     599,   1},  {600,   1199,  2},  {1200,  1949,  3},  {1950,  2399,  4},  {2400,  2649,  5},
    {2650,  2749,  6},  {2750,  3449,  7},  {3450,  3799,  8},  {3800,  4149,  9},  {4150,  4749,  10},
    {4750,  4949,  11}, {5010,  5179,  12}, {5180,  5279,  13}, {5280,  5379,  14}, {5730,  5849,  17},
    {5850,  5999,  18}, {6000,  6149,  19}, {6150,  6449,  20}, {6450,  6599,  21}, {6600,  7399,  22},
    {7500,  7699,  23}, {7700,  8039,  24}, {8040,  8689,  25}, {8690,  9039,  26}, {9040,  9209,  27},
    {9210,  9659,  28}, {9660,  9769,  29}, {9770,  9869,  30}, {9870,  9919,  31}, {9920,  10359, 32},
    {36000, 36199, 33}, {36200, 36349, 34}, {36350, 36949, 35}, {36950, 37549, 36}, {37550, 37749, 37},
    {37750, 38249, 38}, {38250, 38649, 39}, {38650, 39649, 40}, {39650, 41589, 41}, {41590, 43589, 42},
    {43590, 45589, 43}, {45590, 46589, 44}, {46590, 46789, 45}, {46790, 54539, 46}, {54540, 55239, 47},
    {55240, 56739, 48}, {65536, 66435, 65}, {66436, 67335, 66}, {68586, 68935, 71},
};
constexpr int first_tdd_band = 33, last_tdd_band = 48;

struct NamedBand {
    long long first, last;
    const char *name;
};

// Ranges that belong to several bands, as GSM 1800 and 1900, have no name.
constexpr NamedBand umts_bands[] = {
    {10562, 10838, "WCDMA 2100"},
    {9662,  9938,  "WCDMA 1900"},
    {4357,  4458,  "WCDMA 850"},
    {2937,  3088,  "WCDMA 900"},
    {1537,  1738,  "WCDMA 1700"},
};
constexpr NamedBand gsm_bands[] = {
    {0,   124,  "GSM 900"},
    {128, 251,  "GSM 850"},
    {975, 1023, "GSM 900"},
};
// clang-format on

template <std::size_t size>
CellInfo named_cell(const NamedBand (&bands)[size], std::optional<long long> channel)
{
    CellInfo info;
    if (!channel)
        return info;
    info.channel = std::to_string(*channel);
    for (const NamedBand &band : bands)
        if (*channel >= band.first && *channel <= band.last)
            info.band = band.name;
    return info;
}

} // namespace

CellInfo lte_cell(std::optional<long long> earfcn)
{
    CellInfo info;
    if (!earfcn)
        return info;
    info.channel = std::to_string(*earfcn);
    for (const LteBand &band : lte_bands)
        if (*earfcn >= band.first && *earfcn <= band.last) {
            info.band = "LTE BAND " + std::to_string(band.number);
            const bool tdd = band.number >= first_tdd_band && band.number <= last_tdd_band;
            info.duplex = tdd ? "TDD" : "FDD";
        }
    return info;
}

CellInfo umts_cell(std::optional<long long> uarfcn)
{
    return named_cell(umts_bands, uarfcn);
}

CellInfo gsm_cell(std::optional<long long> arfcn)
{
    return named_cell(gsm_bands, arfcn);
}

} // namespace modem_manager
