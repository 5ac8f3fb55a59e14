#include "quality/NoisePictures.h"

#include "quality/FlatField.h"
#include "quality/Sheet.h"
#include "quality/SlantedEdge.h"

namespace kvx::quality {

void DrawParts(const std::string& path, const Picture& picture, const cv::Rect& part,
               const std::vector<Setting>& settings, const std::vector<Gain>& gains) {
    constexpr int kEnlargement = 4;
    cv::Mat original;
    picture.pixels.convertTo(original, CV_8U, 255.0 / picture.white);
    std::vector<std::vector<cv::Mat>> rows;
    for (const Gain gain : gains) {
        rows.push_back({original(part)});
        for (const Setting& setting : settings) rows.back().push_back(Restored(picture, setting.At(gain))(part));
    }
    WritePng(path, SheetOf(rows, kEnlargement));
}

void DrawFlatsAndEdges(const std::string& folder, const std::vector<Setting>& settings,
                       const std::vector<Gain>& gains) {
    const cv::Size size(2 * kPartSize, 2 * kPartSize);
    const cv::Rect middle(kPartSize / 2, kPartSize / 2, kPartSize, kPartSize);
    for (const FlatField& field : AllFlatFields())
        DrawParts(folder + "/flat " + field.name + ".png", DrawFlat(field, size.width), middle, settings, gains);
    for (const Edge& edge : AllEdges())
        DrawParts(folder + "/edge " + edge.name + ".png", DrawEdge(edge, size), middle, settings, gains);
}

}  // namespace kvx::quality
