// A store whose database has some pages.
#ifndef TESTS_PLATFORM_FILLED_STORE_H
#define TESTS_PLATFORM_FILLED_STORE_H

#include "in_child.h"
#include "store_errors.h"

#include <string>

class HostStoreDatabase : public HostStoreErrors
{
protected:
    // 100 saved keys, so that the database has some pages.
    static void fill()
    {
        ASSERT_EQ(in_child([] {
                      for (int i = 0; i < 100; ++i)
                          require(set("key" + std::to_string(i), std::string(100, 'v')) == 0);
                      require(tarnNvramConfig_save() == 0);
                  }),
                  0);
    }
    static bool has_all()
    {
        bool all = true;
        for (int i = 0; i < 100; ++i)
            all = all && get("key" + std::to_string(i)) == std::string(100, 'v');
        return all;
    }
    void remove_database() const
    {
        std::filesystem::remove(database().string() + "-lock");
        std::filesystem::remove(database());
    }
};

#endif
