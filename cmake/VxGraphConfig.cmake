include(CMakeFindDependencyMacro)
find_dependency(Qt6 COMPONENTS Core Gui Widgets Svg Sql PrintSupport)
include("${CMAKE_CURRENT_LIST_DIR}/VxGraphTargets.cmake")
