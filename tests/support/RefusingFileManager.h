#pragma once

#include "Platform/Base/FileManager.h"

#include <functional>
#include <system_error>
#include <utility>

namespace vorn::testing {

/// The system's file manager on a temporary directory of the test's own. Each hook runs before its operation, or after
/// it as `afterCopy`, and may throw or change the files that the operation uses.
class RefusingFileManager : public FileManager {
public:
    using Hook = std::function<void(const std::filesystem::path&)>;

    explicit RefusingFileManager(std::filesystem::path temporary) : temporary_(std::move(temporary)) {}

    Hook beforeCreate, beforeCopy, beforeWrite, beforeSize, beforeRemove;
    std::function<void(const std::filesystem::path& copy)> afterCopy;
    int created = 0, copies = 0, removed = 0;

    /// A hook that throws a `filesystem_error` with `code`.
    static Hook refuse(std::errc code)
    {
        return [code](const std::filesystem::path& path) {
            throw std::filesystem::filesystem_error("refused", path, std::make_error_code(code));
        };
    }

    std::filesystem::path temporaryDirectory() override { return temporary_; }
    void createPrivateDirectory(const std::filesystem::path& directory) override
    {
        run(beforeCreate, directory);
        ++created;
        FileManager::createPrivateDirectory(directory);
    }
    void copyFile(const std::filesystem::path& from, const std::filesystem::path& to,
                  const CopyProgress& progress) override
    {
        run(beforeCopy, from);
        ++copies;
        FileManager::copyFile(from, to, progress);
        run(afterCopy, to);
    }
    void writeAtomically(ByteView bytes, const std::filesystem::path& path) override
    {
        run(beforeWrite, path);
        FileManager::writeAtomically(bytes, path);
    }
    std::int64_t fileSize(const std::filesystem::path& path) override
    {
        run(beforeSize, path);
        return FileManager::fileSize(path);
    }
    void remove(const std::filesystem::path& path) override
    {
        run(beforeRemove, path);
        ++removed;
        FileManager::remove(path);
    }

private:
    static void run(const Hook& hook, const std::filesystem::path& path)
    {
        if (hook) hook(path);
    }

    std::filesystem::path temporary_;
};

} // namespace vorn::testing
