/** Brings a source to the mosaic that a component reads. */
#pragma once

#include "KvxFrame/Finish.h"
#include "frame/base/Buffer.h"

namespace kvx::frame {

class RawPreprocessor {
public:
    /**
     * @param source a valid view
     * @param format of the mosaic: the source's unpacked, of the same bits or more
     * @param finish and `gains` are applied where it is not null
     * @return a view of the source itself where that will do, else of working memory; positive stride
     */
    SourceView Process(const SourceView& source, const Format& format, const Finish* finish, const Gains& gains);
    void Release() noexcept {
        m_memory.Release();
    }

private:
    Buffer m_memory;
};

}  // namespace kvx::frame
