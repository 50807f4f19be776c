// The numbers that the daemons answer with.
#include "daemons/cme_error.h"

#include <gtest/gtest.h>

namespace
{

using namespace daemons;

TEST(CmeErrors, CanNotBeMistakenForTheLibrarysResults)
{
    for (const CmeErrorText &row : cme_errors) {
        const int number = static_cast<int>(row.error);
        EXPECT_TRUE(row.error == CmeError::ok || number >= 10) << row.name;
        EXPECT_EQ(find_cme_error(number), &row) << "number used twice";
        EXPECT_STRNE(row.text, "");
    }
    EXPECT_EQ(find_cme_error(1), nullptr);
}

} // namespace
