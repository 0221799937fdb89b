# Run at build time (cmake -P): writes the build's identity into a header that
# changes only when the commit or the settings do, so a rebuild after a commit
# names the right one. Inputs: OUT, SOURCE_DIR, VERSION, COMPILER, FLAGS.
set(commit "unknown")
find_package(Git QUIET)
if(GIT_FOUND)
	execute_process(COMMAND ${GIT_EXECUTABLE} -C ${SOURCE_DIR} describe --always --dirty --abbrev=12
		OUTPUT_VARIABLE described RESULT_VARIABLE failed ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
	if(NOT failed AND described)
		set(commit ${described})
	endif()
endif()
string(REPLACE "\"" "\\\"" FLAGS "${FLAGS}")
string(STRIP "${FLAGS}" FLAGS)
set(text "// Generated at build time: the identity of this build.
#define QUICKSTEP_BUILD_VERSION \"${VERSION}\"
#define QUICKSTEP_BUILD_COMMIT \"${commit}\"
#define QUICKSTEP_BUILD_COMPILER \"${COMPILER}\"
#define QUICKSTEP_BUILD_FLAGS \"${FLAGS}\"
")
if(EXISTS ${OUT})
	file(READ ${OUT} old)
endif()
if(NOT "${old}" STREQUAL "${text}")
	file(WRITE ${OUT} "${text}")
endif()
