#pragma once

#include <filesystem>

#include "tools/files/FileDescriptor.h"

namespace kvx::tool {

/** A new file next to a target; it disappears unless it is moved there. */
class TemporaryFile {
public:
    /** Has no name until it is moved: even a killed process leaves nothing. Not every file system can do this. */
    static TemporaryFile WithoutName(const std::filesystem::path& target);

    /**
     * Has a hidden name made of the target's. A killed process leaves it; the next one that writes the same target
     * removes it, since nobody holds its lock.
     */
    static TemporaryFile WithName(const std::filesystem::path& target);

    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile();

    /** Open for writing; negative, with errno set, when the file could not be made. */
    int Descriptor() const {
        return m_file.Get();
    }

    /** Replaces the target with the file in one step. False, with errno set, when that fails. */
    bool MoveTo(const std::filesystem::path& target);

private:
    TemporaryFile(FileDescriptor file, std::filesystem::path name);

    bool LinkTo(const std::filesystem::path& name) const;

    FileDescriptor m_file;
    std::filesystem::path m_name;  ///< empty while the file has none
};

}  // namespace kvx::tool
