# Copies FROM to TO unless TO is there already.
if(NOT EXISTS ${TO})
  configure_file(${FROM} ${TO} COPYONLY)
endif()
