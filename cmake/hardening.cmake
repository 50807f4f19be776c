# What runs on a development machine is built so that an overrun ends the program and does not take
# it over. For the library of a router, that is an option.
option(CMIF_HARDEN_LIBRARY "Harden the library too, which makes it larger" OFF)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Does the compiler check C library functions already, by itself or by the packager's flags?
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS -O2) # without optimization some compilers don't
check_cxx_source_compiles("
  #ifndef _FORTIFY_SOURCE
  #error
  #endif
  int main() { return 0; }" CMIF_FORTIFIED)
unset(CMAKE_REQUIRED_FLAGS)

# For the folders that are added from here on.
macro(harden)
  get_directory_property(unhardened_compile_options COMPILE_OPTIONS)
  get_directory_property(unhardened_link_options LINK_OPTIONS)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-fstack-protector-strong)
  if(NOT CMIF_SANITIZE AND NOT CMIF_FORTIFIED) # a sanitizer checks the same functions itself
    add_compile_options($<$<NOT:$<CONFIG:Debug,>>:-D_FORTIFY_SOURCE=2>) # it needs optimization
  endif()
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endmacro()

macro(unharden)
  unset(CMAKE_POSITION_INDEPENDENT_CODE)
  set_directory_properties(PROPERTIES
    COMPILE_OPTIONS "${unhardened_compile_options}" LINK_OPTIONS "${unhardened_link_options}")
endmacro()
