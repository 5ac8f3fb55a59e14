/** Prepares the mosaic for a component: unpacks the source, applies black level and white balance. */
#pragma once

#include "KvxFrame/Finish.h"
#include "frame/base/Buffer.h"

namespace kvx::frame {

class RawPreprocessor {
public:
    /**
     * @param source a valid view
     * @param format format of the mosaic: the source's, unpacked, with the same or more bits
     * @param finish applied with `gains`; null: none
     * @return a view with a positive stride: the source itself if nothing needs to change, else working memory
     */
    SourceView Process(const SourceView& source, const Format& format, const Finish* finish, const Gains& gains);
    void Release() noexcept {
        m_memory.Release();
    }

private:
    Buffer m_memory;
};

}  // namespace kvx::frame
