#pragma once

#include <tav/Export.h>

#include <string>

namespace hull::filesystem {

// The directory for temporary files, without a trailing separator.
TAV_EXPORT std::string tempDirectory();

// Root of the installation that holds the loaded libtqtav.so: the parent of
// the directory the library lies in. The build tree has the same layout.
TAV_EXPORT std::string installPath();

// `<installPath>/share/tav`.
TAV_EXPORT std::string dataPath();

TAV_EXPORT long processId();

} // namespace hull::filesystem
