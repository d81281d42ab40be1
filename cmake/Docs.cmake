# The target docs: the reference of the public headers, without a warning.
find_program(DOXYGEN_PROGRAM doxygen)
if(DOXYGEN_PROGRAM)
  configure_file(docs/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)
  add_custom_target(docs COMMAND ${DOXYGEN_PROGRAM} ${PROJECT_BINARY_DIR}/Doxyfile
                    COMMENT "Writing the reference to doc/reference" VERBATIM)
endif()
