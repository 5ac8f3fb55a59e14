#include "frame/learned/LearnedInterpolator.h"

#include "frame/learned/fine/FineInterpolator.h"
#include "frame/learned/swift/SwiftInterpolator.h"

namespace kvx::frame {

std::unique_ptr<LearnedInterpolator> MakeLearnedInterpolator(std::string_view name, Family family) {
    if (family != Family::Bayer && family != Family::TrueSense) return nullptr;
    if (name == FineInterpolator::kName) return std::make_unique<FineInterpolator>(family);
    if (name == SwiftInterpolator::kName) return std::make_unique<SwiftInterpolator>(family);
    return nullptr;
}

}  // namespace kvx::frame
