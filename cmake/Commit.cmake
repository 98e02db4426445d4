# Writes the file OUT that tells the commit of the folder SOURCE, unless it tells so already: only a
# file that changes is compiled again. COMMIT, when it is not empty, is taken as it is.
if(NOT COMMIT)
  execute_process(
    COMMAND git --no-optional-locks -C ${SOURCE} describe --always --exclude=* --abbrev=12 --dirty=+
    OUTPUT_VARIABLE COMMIT OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
file(CONFIGURE OUTPUT ${OUT} CONTENT [[#include "app/Commit.h"

namespace dravik {

const char* CommitOfBuild() {
    return "@COMMIT@";
}

}  // namespace dravik
]] @ONLY)
