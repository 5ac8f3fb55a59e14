#include "demosaicers/denoising/TrueSenseKodak.h"

#include <new>

#include "demosaicers/frame/PixelRow.h"
#include "demosaicers/frame/SourceRow.h"

namespace kvx {
namespace {

/** A byte as a value of `bits` bits: white stays white. */
uint16_t Deepened(uint8_t value, int bits) {
    const uint32_t white = (1U << bits) - 1;
    return static_cast<uint16_t>((value * white + 127) / 255);
}

}  // namespace

template <class T>
void TrueSenseKodak<T>::CleanMemory() noexcept {
    TrueSenseDemosaicer<T>::CleanMemory();
    for (auto& buffer : m_buffers) buffer.reset();
    m_input.reset();
    m_output.reset();
    m_row.reset();
    m_width = m_height = 0;
}

template <class T>
int TrueSenseKodak<T>::Reserve() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    m_param = PipelineParamOf(frame.area, frame.params);
    m_tone = ByteToneOf(frame.params.toneTable);
    if (m_width == frame.area.width && m_height == frame.area.height) return KvxResult_Success;

    CleanMemory();
    m_memory.mode = ImageProcessMode_Sizes;
    if (Api_ImageProcess(&m_param, &m_memory) < 0) return KvxResult_NoMemory;  // sizes that do not fit
    m_memory.mode = ImageProcessMode_Frame;
    const struct {
        void*& address;
        uint32_t size;
    } plan[] = {{m_memory.work, m_memory.workSize},     {m_memory.staging, m_memory.stagingSize},
                {m_memory.lowPan, m_memory.lowPanSize}, {m_memory.full0, m_memory.full0Size},
                {m_memory.full1, m_memory.full1Size},   {m_memory.full2, m_memory.full2Size},
                {m_memory.pan, m_memory.panSize}};
    const auto reserve = [](auto& buffer, size_t size) {
        buffer.reset(new (std::nothrow) std::remove_reference_t<decltype(buffer[0])>[size]);
        return buffer != nullptr;
    };
    const size_t pixels = size_t(frame.area.width) * frame.area.height;
    bool reserved =
        reserve(m_input, pixels) && reserve(m_output, 3 * pixels) && reserve(m_row, 3 * size_t(frame.area.width));
    for (size_t i = 0; i < std::size(plan); ++i) {
        reserved = reserved && reserve(m_buffers[i], plan[i].size);
        plan[i].address = m_buffers[i].get();
    }
    if (!reserved) {
        CleanMemory();
        return KvxResult_NoMemory;
    }
    m_width = frame.area.width;
    m_height = frame.area.height;
    return KvxResult_Success;
}

template <class T>
int TrueSenseKodak<T>::Convert() noexcept {
    const TrueSenseFrame& frame = this->Frame();
    for (int row = 0; row < m_height; ++row)
        ReadSourceRow(frame, row, reinterpret_cast<int16_t*>(m_input.get()) + ptrdiff_t{row} * m_width);
    m_param.input = m_input.get();
    m_param.output = m_output.get();
    m_param.toneScale = m_tone.data();
    if (Api_ImageProcess(&m_param, &m_memory) != 0) return KvxResult_InvalidArgument;
    for (int row = 0; row < frame.area.region.height; ++row) WriteRow(row);
    return KvxResult_Success;
}

template <class T>
void TrueSenseKodak<T>::WriteRow(int row) const noexcept {
    const TrueSenseFrame& frame = this->Frame();
    const Area& region = frame.area.region;
    const bool toBytes = frame.destination.sampleSize == sizeof(uint8_t);
    const int bits = kWorkingDepth + frame.outputShift;
    const uint8_t* rgb = m_output.get() + (ptrdiff_t{region.row + row} * m_width + region.column) * kChannels;
    uint16_t* const colours[] = {m_row.get(), m_row.get() + m_width, m_row.get() + 2 * ptrdiff_t{m_width}};
    for (int column = 0; column < region.width; ++column, rgb += kChannels)
        for (int channel = 0; channel < kChannels; ++channel)
            colours[channel][column] = toBytes ? rgb[channel] : Deepened(rgb[channel], bits);
    StorePixelRow(frame, row, {colours[0], colours[1], colours[2]}, static_cast<size_t>(region.width), 0);
}

template class TrueSenseKodak<unsigned char>;
template class TrueSenseKodak<unsigned short>;

}  // namespace kvx
