// The provider list: the record that each text becomes, and the lines printed.
#include "tests/support/provider_list_run.h"

#include <cstddef>
#include <gtest/gtest.h>

static_assert(sizeof(cmif_provider_info) == 68);
static_assert(offsetof(cmif_provider_info, oper_long) == 0);
static_assert(offsetof(cmif_provider_info, oper_short) == 20);
static_assert(offsetof(cmif_provider_info, oper_numeric) == 40);
static_assert(offsetof(cmif_provider_info, stat) == 60);
static_assert(offsetof(cmif_provider_info, act) == 64);

TEST(ProviderList, IsReadGroupByGroup)
{
    expect_list(R"(+COPS: (2,"One","O1","00101",7),(1,"Two","T2","00102",2))",
                {{R"(2,"One","O1","00101",7)", {2, "One", "O1", "00101", 7}},
                 {R"(1,"Two","T2","00102",2)", {1, "Two", "T2", "00102", 2}}});
    expect_list(
        "+COPS: (3,\"Forbidden Net\",\"Forb\",\"26203\",0)\r\n,,(0-4),(0-2)\n\nOK\n",
        {{R"(3,"Forbidden Net","Forb","26203",0)", {3, "Forbidden Net", "Forb", "26203", 0}},
         {R"(0-4Forbidden Net")", {0}},
         {R"(0-2Forbidden Net")", {0}}});
}

// What is carried over ends where a field of the longer group did.
TEST(ProviderList, CarriesTextOfALongerGroupOverIntoAShorterOne)
{
    expect_list(R"((2,"A","B","1",7),(3))",
                {{R"(2,"A","B","1",7)", {2, "A", "B", "1", 7}}, {"3", {3}}});
    expect_list(R"((1234,"AB"),(5))", {{R"(1234,"AB")", {1234, "AB"}}, {"5234", {5234}}});
    expect_list(R"((1,"A","B","C",12345)(1,"A","B","C",7))",
                {{R"(1,"A","B","C",12345)", {1, "A", "B", "C", 12345}},
                 {R"(1,"A","B","C",72345)", {1, "A", "B", "C", 72345}}});
    expect_list(R"((1,"LongName","x")(2,"Lo"))",
                {{R"(1,"LongName","x")", {1, "LongName", "x"}}, {R"(2,"Lo"gName")", {2, "Lo"}}});
    expect_list(R"((1,"LongName","x")(2,Lo))",
                {{R"(1,"LongName","x")", {1, "LongName", "x"}}, {R"(2,LoongName")", {2, ""}}});
}

// Each further group sees what the groups before it have left.
TEST(ProviderList, KeepsTheRestOfEveryEarlierGroup)
{
    expect_list(
        "(123456)(9)(88)()",
        {{"123456", {123456}}, {"923456", {923456}}, {"883456", {883456}}, {"883456", {883456}}});
    // Fields after the fifth are split, too.
    expect_list(R"((1,"A","B","C",2,9,888)(1,"A","B","C",2,9))",
                {{R"(1,"A","B","C",2,9,888)", {1, "A", "B", "C", 2}},
                 {R"(1,"A","B","C",2,9)", {1, "A", "B", "C", 2}}});
    // A comma in front of a field ends none, and stays.
    expect_list("(,,5,6)()", {{",,5,6", {5, "6"}}, {",,5", {5}}});
    expect_list("(1,,2,3)(45)", {{"1,,2,3", {1, "2", "3"}}, {"45,2", {45, "2"}}});
}

TEST(ProviderList, ReadsAnEmptyGroupFromWhatIsLeft)
{
    expect_list("()", {{"", {}}});
    expect_list("()()(1)()", {{"", {}}, {"", {}}, {"1", {1}}, {"1", {1}}});
    expect_list(R"((2,"A","B","1",7)())",
                {{R"(2,"A","B","1",7)", {2, "A", "B", "1", 7}}, {"2", {2}}});
}

TEST(ProviderList, SkipsEmptyFields)
{
    expect_list(R"((1,,"A","B","C",2))", {{R"(1,,"A","B","C",2)", {1, "A", "B", "C", 2}}});
    expect_list(R"((,,,1,"A",,,,"B",))", {{R"(,,,1,"A",,,,"B",)", {1, "A", "B"}}});
    expect_list("(,)", {{",", {}}});
    expect_list("(,,,,,,)", {{",,,,,,", {}}});
    // A pair of quotes or a space is not an empty field.
    expect_list(R"((1,"", ,"C"))", {{R"(1,"", ,"C")", {1, "", " ", "C"}}});
}

TEST(ProviderList, SplitsAtCommasInQuotes)
{
    expect_list(R"((1,"A,B","S","26201",7))", {{R"(1,"A,B","S","26201",7)", {1, "", "", "S", 0}}});
}

TEST(ProviderList, StripsQuotes)
{
    expect_list(R"((1,bare,x"in"y,""))", {{R"(1,bare,x"in"y,"")", {1, "bare", "in", ""}}});
    expect_list(R"((1,"open,close","a"b"c"))", {{R"(1,"open,close","a"b"c")", {1, "", "", "a"}}});
    expect_list(R"((1,"))", {{R"(1,")", {1, ""}}});
    expect_list(R"(("2",'1',"3","x","7"))", {{R"("2",'1',"3","x","7")", {0, "'1'", "3", "x", 0}}});
}

TEST(ProviderList, ConvertsNumbers)
{
    expect_list("( 2,a,b,c, 7)(-1,a,b,c,-9)(+3x,a,b,c,x)",
                {{" 2,a,b,c, 7", {2, "a", "b", "c", 7}},
                 {"-1,a,b,c,-9", {-1, "a", "b", "c", -9}},
                 {"+3x,a,b,c,x", {3, "a", "b", "c", 0}}});
}

// Numbers after 7 characters, names after 19; the other fields of the group are whole.
TEST(ProviderList, CutsFields)
{
    expect_list("(1234567,a,b,c,7654321)",
                {{"1234567,a,b,c,7654321", {1234567, "a", "b", "c", 7654321}}});
    expect_list("(12345678,a,b,c,87654321)",
                {{"12345678,a,b,c,87654321", {1234567, "a", "b", "c", 8765432}}});
    expect_list("(       9,a,b,c,99999999999999999999)",
                {{"       9,a,b,c,99999999999999999999", {0, "a", "b", "c", 9999999}}});
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    for (const size_t size : {18U, 19U, 20U, 21U, 26U}) {
        const std::string name = letters.substr(0, size);
        const std::string kept = name.substr(0, 19);
        std::string group = "1,\"";
        group.append(name).append("\",").append(name).append(",x\"").append(name).append("\",2");
        expect_list("(" + group + ")", {{group, {1, kept, kept, kept, 2}}});
    }
}

TEST(ProviderList, CutsGroups)
{
    for (const size_t size : {126U, 127U, 128U, 129U, 500U}) {
        SCOPED_TRACE(size);
        const std::string group = std::string(size - 2, 'n') + ",7";
        const std::string file = "(" + group + ")(3)";
        const std::string kept = group.substr(0, 127);
        const Provider first = size <= 127 ? Provider{0, "7"} : Provider{0};
        // The second group takes the first letter, and the others up to where the comma was.
        expect_list(file, {{kept, first}, {"3" + kept.substr(1, size - 3), {3}}});
    }
}

TEST(ProviderList, SurvivesANameOf500Characters)
{
    const std::string name(500, 'N');
    const std::string quoted = "1,\"" + name + "\",\"S\",\"26201\",7";
    expect_list("(" + quoted + ")", {{quoted.substr(0, 127), {1, ""}}});
    const std::string bare = "1," + name + ",S,26201,7";
    expect_list("(" + bare + ")", {{bare.substr(0, 127), {1, std::string(19, 'N')}}});
    const std::string digits(500, '1');
    expect_list("(" + digits + ")", {{digits.substr(0, 127), {1111111}}});
}

TEST(ProviderList, IgnoresTextOutsideParentheses)
{
    expect_list("x)y\"(1)),2,\"A\")\n(3", {{"1", {1}}}, unclosed);
    expect_list("no, \"group\" at all)", {}, no_search);
    expect_list(")", {}, no_search);
    expect_list("", {}, no_search);
}

TEST(ProviderList, KeepsAParenthesisInsideAGroup)
{
    expect_list(R"(((1,"A(B","C"))", {{R"((1,"A(B","C")", {0, "A(B", "C"}}});
    expect_list(R"((1,"A)B","C"))", {{R"(1,"A)", {1, ""}}});
    expect_list("((((", {}, unclosed);
}

TEST(ProviderList, EndsAtAnUnclosedGroup)
{
    expect_list("(", {}, unclosed);
    expect_list(R"((1,"A"),(2,"B")", {{R"(1,"A")", {1, "A"}}}, unclosed);
}

TEST(ProviderList, EndsAtABinaryZero)
{
    using std::string_literals::operator""s;
    expect_reading(read_provider_list("(1)\0(2)"s), "(1)", {{"1", {1}}}, list_end);
    expect_reading(read_provider_list("(1)(2\0)"s), "(1)(2", {{"1", {1}}}, unclosed);
    expect_reading(read_provider_list("\0(1)"s), "", {}, no_search);
    expect_reading(read_provider_list(std::string(4096, '\0')), "", {}, no_search);
}

TEST(ProviderList, IsNeverAFormat)
{
    expect_list("%n%s(1,\"%s%n\",%d)", {{"1,\"%s%n\",%d", {1, "%s%n", "%d"}}});
}
