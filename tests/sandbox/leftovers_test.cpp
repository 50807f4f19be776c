// /data, where there is none and none can be created.
#include "sandbox/leftovers.h"

#include <cerrno>
#include <cstddef>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace
{

// From here on this process can create no folder, as on a read-only root file system.
bool refuse_folders()
{
    struct sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
#ifdef SYS_mkdir
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_mkdir, 1, 0),
#endif
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_mkdirat, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EROFS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const struct sock_fprog program = {std::size(rules), rules};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST(DataFolder, IsReportedWhenItCanNotBeCreated)
{
    ASSERT_TRUE(refuse_folders());
    testing::internal::CaptureStderr();
    const sandbox::DataFolder folder;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "cmif-sim: no /data for the debug log: Read-only file system\n");
}

} // namespace
