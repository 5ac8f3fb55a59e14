#pragma once

#include <unistd.h>

#include <utility>

namespace kvx::tool {

/** Owns an open file; negative when it could not be opened. */
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor() {
        Close();
    }

    int Get() const {
        return m_descriptor;
    }

    /** False when closing reports that an earlier write failed. */
    bool Close() {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

}  // namespace kvx::tool
