#include "KvxFrame/Relayout.h"

#include "frame/base/Fail.h"
#include "frame/samples/RowTeam.h"
#include "frame/samples/SampleRow.h"
#include "frame/view/Checks.h"

namespace kvx::frame {

void Relayout(const SourceView& source, const DestinationView& destination, int threads) {
    CheckFrame(source);
    CheckFrame(destination);
    CheckSameSize(source, destination);
    if (Unpacked(source.format) != Unpacked(destination.format))
        Fail(KvxResult_InvalidArgument, "{} cannot be laid out as {}: only the layout may differ", Name(source.format),
             Name(destination.format));
    CheckApart(source, destination);
    RowTeam(destination, threads).Run([&](uint32_t row, uint16_t* samples) {
        ReadRow(source, row, samples);
        WriteRow(destination, row, samples);
    });
}

}  // namespace kvx::frame
