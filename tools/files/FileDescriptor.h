#pragma once

#include <unistd.h>

#include <utility>

namespace kvx::tool {

/** Owns an open file; a negative number stands for one that could not be opened. */
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
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

    /** False when the system reports a write that failed late. */
    bool Close() {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int m_descriptor;
};

}  // namespace kvx::tool
