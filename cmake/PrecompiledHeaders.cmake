# The standard headers that many files include, read once for all of them. The builds with
# sanitizers use this; those of the product do not, so that a missing include is noticed.
option(ZKR_PRECOMPILED_HEADERS "Precompile standard headers" OFF)
if(ZKR_PRECOMPILED_HEADERS)
  add_library(zkr_headers STATIC ${CMAKE_SOURCE_DIR}/cmake/Headers.cpp)
  target_link_libraries(zkr_headers PRIVATE zkr_warnings)
  target_precompile_headers(zkr_headers PRIVATE
    <algorithm> <array> <atomic> <cmath> <cstdint> <cstring> <functional> <map> <memory> <mutex>
    <optional> <string> <vector>)
endif()
