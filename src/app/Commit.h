#pragma once

namespace dravik {

/// The commit that the program was built from, shortened, with a "+" where files had been changed;
/// empty when that is not known.
const char* CommitOfBuild();

}  // namespace dravik
