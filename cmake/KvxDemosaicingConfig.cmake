include(${CMAKE_CURRENT_LIST_DIR}/KvxDemosaicingTargets.cmake)
# The frame layer is a package of its own, which need not be installed.
include(${CMAKE_CURRENT_LIST_DIR}/KvxFrameTargets.cmake OPTIONAL)
