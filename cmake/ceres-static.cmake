# Defines `quillet_ceres`: Ceres Solver with its dependencies linked from their static archives.
#
# Debian's libceres.a pulls in about 25 shared libraries (glog, gflags, SuiteSparse, LAPACK,
# BLAS, gfortran, OpenMP, ...). Loading and relocating them took longer than a whole fit of
# 2,000 points, and `quillet-cli fit` starts once per run. The archives come with the same -dev
# packages; only libmetis (no archive in Debian) and libunwind (clashes with libgcc's unwinder
# when static) stay shared. When an archive is missing the plain imported target
# is used, so the build still works, only slower to start.
find_package(Ceres REQUIRED)

option(QUILLET_STATIC_CERES_DEPS "Link Ceres' dependencies from static archives" ON)

add_library(quillet_ceres INTERFACE)

# Full path of archive `name`, as the compiler's linker would find it; empty when it has none.
function(quillet_find_archive out name)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
                  OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${path}" AND EXISTS "${path}")
    set(${out} "${path}" PARENT_SCOPE)
  else()
    set(${out} "" PARENT_SCOPE)
  endif()
endfunction()

set(static_ok OFF)
if(QUILLET_STATIC_CERES_DEPS AND NOT WIN32)
  get_target_property(ceres_archive Ceres::ceres IMPORTED_LOCATION_RELEASE)
  set(archives "${ceres_archive}")
  set(missing "")
  # Every archive after the ones that use it. The reference LAPACK and BLAS come from their own
  # folders, not from whichever implementation the alternatives system names libblas.a.
  foreach(name libglog.a libgflags.a libspqr.a libcholmod.a libamd.a libcamd.a libccolamd.a
               libcolamd.a libsuitesparseconfig.a libcxsparse.a lapack/liblapack.a blas/libblas.a
               libgfortran.a libquadmath.a libgomp.a)
    quillet_find_archive(found ${name})
    if(found)
      list(APPEND archives "${found}")
    else()
      list(APPEND missing ${name})
    endif()
  endforeach()
  # Debian ships METIS to SuiteSparse as a runtime library only.
  find_library(QUILLET_SHARED_METIS NAMES metis libmetis.so.5 NO_CACHE)
  if(ceres_archive AND QUILLET_SHARED_METIS AND NOT missing)
    set(static_ok ON)
  else()
    message(STATUS "Ceres: linking its shared dependencies (missing: ${missing} ${QUILLET_SHARED_METIS})")
  endif()
endif()

if(static_ok)
  message(STATUS "Ceres: linking its dependencies from static archives")
  find_package(Threads REQUIRED)
  find_package(Eigen3 REQUIRED NO_MODULE)
  target_include_directories(quillet_ceres SYSTEM INTERFACE
                             $<TARGET_PROPERTY:Ceres::ceres,INTERFACE_INCLUDE_DIRECTORIES>)
  target_link_libraries(quillet_ceres INTERFACE ${archives} unwind ${QUILLET_SHARED_METIS}
                        Threads::Threads Eigen3::Eigen rt m dl)
else()
  target_link_libraries(quillet_ceres INTERFACE Ceres::ceres)
endif()
