#include <hull/filesystem.h>
#include <hull/i18n.h>

#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace hull::filesystem {

std::string tempDirectory()
{
    // The fixed system directory: the library reads no environment.
    return P_tmpdir;
}

std::string installPath()
{
    static const std::string path = [] {
        const std::filesystem::path library =
            i18n::modulePathOf(reinterpret_cast<const void*>(&installPath));
        std::error_code ec;
        const auto canonical = std::filesystem::weakly_canonical(library, ec);
        return (ec ? library : canonical).parent_path().parent_path().string();
    }();
    return path;
}

std::string dataPath()
{
    return installPath() + "/share/tav";
}

long processId()
{
    return static_cast<long>(::getpid());
}

} // namespace hull::filesystem
