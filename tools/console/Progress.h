#pragma once

#include <cstddef>

namespace kvx::tool {

/** A progress bar for many files, on standard error; shown only on a terminal. */
class Progress {
public:
    explicit Progress(size_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /** Removes the bar. */
    ~Progress();

    /** Counts one more file as done. */
    void Advance();

private:
    void Draw() const;

    size_t m_total;
    size_t m_done = 0;
    bool m_isShown;
};

}  // namespace kvx::tool
