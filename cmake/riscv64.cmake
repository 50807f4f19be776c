include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
cross(riscv64-linux-gnu riscv64 riscv64)
