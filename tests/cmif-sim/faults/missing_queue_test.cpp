// Faults of a daemon whose queue does not exist.
#include "tests/support/faulty_server.h"

namespace
{

class MissingQueue : public FaultyServer
{
protected:
    void SetUp() override
    {
        start();
        command("fault at die\nfault at remove-queue request");
    }
};

TEST_F(MissingQueue, CanNotBeRemoved)
{
    const cmif_sim::Answer failed = give("fault at remove-queue request");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.text, "1: can't remove message queue 899: No such file or directory\n");
}

TEST_F(MissingQueue, IsReportedWhenItCanNotBeCreated)
{
    while (msgget(IPC_PRIVATE, 0600) != -1) {} // until the system has no room for another one
    const cmif_sim::Answer failed = give("fault at restart");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.text, "1: the at queues can't be made\n");
    EXPECT_NE(server->errors().find("can't use message queue 899: No space left on device\n"),
              std::string::npos)
        << server->errors();
}

} // namespace
