# The changelog and the AppStream data name the version once more; both must tell the one that is built. Sets
# PICTAVO_RELEASE_DATE, the day of the release (2026-11-21), for the manual pages.

set_property(
  DIRECTORY
  APPEND
  PROPERTY CMAKE_CONFIGURE_DEPENDS changelog org.example.pictavo.metainfo.xml)

file(READ changelog changelog)
if(NOT changelog MATCHES "^pictavo \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "The newest entry of packaging/linux/changelog is not of version ${PROJECT_VERSION}")
endif()

file(READ org.example.pictavo.metainfo.xml metainfo)
if(NOT metainfo MATCHES "<releases>[ \n]*<release version=\"${PROJECT_VERSION}\" date=\"([0-9-]+)\"")
  message(FATAL_ERROR "The newest release in the AppStream data is not version ${PROJECT_VERSION}")
endif()
set(PICTAVO_RELEASE_DATE ${CMAKE_MATCH_1})
