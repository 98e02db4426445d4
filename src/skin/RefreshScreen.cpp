#include <algorithm>
#include <vector>

#include "skin/SkinScreen.h"
#include "skin/basSkin.h"

namespace dravik {

namespace {

std::vector<const SkinKind*> KindsByTurn() {
    const auto kinds = SkinKinds();
    std::vector<const SkinKind*> order(kinds.begin(), kinds.end());
    std::stable_sort(order.begin(), order.end(),
                     [](const SkinKind* a, const SkinKind* b) { return a->Turn < b->Turn; });
    return order;
}

}  // namespace

void RefreshScreen(SkinScreen& screen) {
    static const std::vector<const SkinKind*> order = KindsByTurn();
    for (const SkinKind* kind : order) {
        if (kind->Refresh == nullptr) continue;
        std::vector<ScreenElement>& elements = screen.Elements(*kind);
        for (std::size_t i = 0; i < elements.size(); ++i)
            kind->Refresh(screen, elements[i], static_cast<int>(i));
    }
}

}  // namespace dravik
