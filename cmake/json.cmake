# Target nlohmann_json::nlohmann_json. It is one header: some distributions install nothing else.
if(TARGET nlohmann_json::nlohmann_json) # of the project that this one is part of
  return()
endif()
find_path(NLOHMANN_JSON_INCLUDE_DIR nlohmann/json.hpp REQUIRED)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(nlohmann_json::nlohmann_json INTERFACE ${NLOHMANN_JSON_INCLUDE_DIR})
