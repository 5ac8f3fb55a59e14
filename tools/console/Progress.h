#pragma once

#include <cstddef>

namespace kvx::tool {

/** A bar on standard error while many files are worked on; nothing unless that is a terminal. */
class Progress {
public:
    explicit Progress(size_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /** Wipes the bar away. */
    ~Progress();

    /** One more file is done. */
    void Advance();

private:
    void Draw() const;

    size_t m_total;
    size_t m_done = 0;
    bool m_isShown;
};

}  // namespace kvx::tool
