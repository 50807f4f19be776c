# What runs on a development machine is built so that an overrun ends the program and does not take
# it over. For the library of a router, that is an option.
option(CMIF_HARDEN_LIBRARY "Harden the library too, which makes it larger" OFF)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# For the folders that are added from here on.
macro(harden)
  get_directory_property(unhardened_compile_options COMPILE_OPTIONS)
  get_directory_property(unhardened_link_options LINK_OPTIONS)
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  add_compile_options(-fstack-protector-strong)
  if(NOT CMIF_SANITIZE) # a sanitizer checks the same functions itself
    # It needs optimization. Some compilers define it already.
    add_compile_options($<$<NOT:$<CONFIG:Debug,>>:-U_FORTIFY_SOURCE>
                        $<$<NOT:$<CONFIG:Debug,>>:-D_FORTIFY_SOURCE=2>)
  endif()
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endmacro()

macro(unharden)
  unset(CMAKE_POSITION_INDEPENDENT_CODE)
  set_directory_properties(PROPERTIES
    COMPILE_OPTIONS "${unhardened_compile_options}" LINK_OPTIONS "${unhardened_link_options}")
endmacro()
