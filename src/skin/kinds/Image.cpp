#include <QWidget>
#include <algorithm>
#include "controls/SkinList.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/At.h"
#include "platform/Text.h"
#include "skin/kinds/KindParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using E = SkinElement;
using enum Read;

constexpr SkinKey kKeys[] = {
    {"X", Integer, &E::X, "0", "left edge"},
    {"Y", Integer, &E::Y, "0", "top edge"},
    {"Width", Integer, &E::Width, "800", "width; 0: that of the picture"},
    {"Height", Integer, &E::Height, "480", "height; 0: that of the picture"},
    {"Picture", Picture, &E::Picture, "back.png", "picture"},
};

/// What decides over the picture and whether it is seen.
enum class Driver {
    Nothing,    ///< a fixed picture
    State,      ///< an image function switches it
    Selection,  ///< the highlight: it lies over the selected button or slider
    Entry,      ///< it is the picture of the selected list entry
};

class PictureItem : public PaintedItem {
 public:
    void Paint(QPainter& painter) const override { PaintPicture(painter, Place(), picture_); }
    void SetScale(double scale) override {
        PaintedItem::SetScale(scale);
        picture_ = picture_.AtScale(scale);
    }

    void SetPicture(const SkinPicture& picture) {
        if (picture == picture_) return;
        picture_ = picture;
        Repaint();
    }

    Driver By = Driver::Nothing;
    std::optional<std::string> EntryPicture;  ///< picture key of the entry that it shows

 private:
    SkinPicture picture_;
};

/// Where an image lies, in design pixels: a width or height that is not stated is its picture's.
QRectF Area(const SkinElement& element, const SkinPicture& picture) {
    const QSizeF natural = picture.DesignSize();
    return {static_cast<double>(element.X), static_cast<double>(element.Y),
            element.Width > 0 ? element.Width : natural.width(),
            element.Height > 0 ? element.Height : natural.height()};
}

/// @param function  in lower case
Driver DriverOf(const std::string& function) {
    if (function == kHighlightWord) return Driver::Selection;
    if (function == kEntryWord) return Driver::Entry;
    const auto words = ImageFunctionWords();
    const bool switched =
        std::find(words.begin(), words.end(), SplitAtLast(function).Word) != words.end();
    return switched ? Driver::State : Driver::Nothing;
}

std::optional<SkinError> Build(SkinScreen& screen, ScreenElement& element, int index) {
    PictureReader pictures(screen, element);
    const SkinPicture picture = pictures.Load("Picture", element.Picture);
    if (pictures.Error()) return pictures.Error();
    auto item = std::make_unique<PictureItem>();
    item->By = DriverOf(element.Evaluated);
    if (item->By == Driver::Selection) screen.Highlight = index;
    // A lamp that is off must not flash until the first refresh puts it out.
    item->SetVisible(item->By == Driver::State ? ImageState(element.Evaluated)
                                               : item->By != Driver::Selection);
    item->SetPicture(picture);
    const QRectF area = Area(element, picture);
    item->Box = {area.x(), area.y(), area.width(), area.height()};
    AddItem(screen, element, std::move(item));
    return std::nullopt;
}

/// The highlight lies over the selected button or slider and is hidden without one.
void RefreshHighlight(SkinScreen& screen, ScreenElement& element) {
    const QWidget* selected = screen.Control(kButtonKind, basGlobal.FocusedButton);
    if (selected == nullptr) selected = screen.Control(kSliderKind, basGlobal.FocusedSlider);
    auto& item = ItemOf<PictureItem>(element);
    item.SetVisible(selected != nullptr);
    if (selected == nullptr) return;
    const QWidget* container = screen.ContainerOf(element);
    const QPointF corner = selected->mapTo(container->window(), QPoint(0, 0)) -
                           container->mapTo(container->window(), QPoint(0, 0));
    item.MoveTo(QRectF(corner / screen.Scale(), QSizeF(selected->size()) / screen.Scale()));
}

/// The picture of the selected entry of the current list; the image's own where the skin has none.
void RefreshEntry(SkinScreen& screen, ScreenElement& element) {
    const ListSlot* list = CurrentList();
    std::string key;
    if (list != nullptr && list->Selected > 0) key = At(list->Entries, list->Selected - 1).Picture;
    auto& item = ItemOf<PictureItem>(element);
    if (item.EntryPicture == key) return;
    item.EntryPicture = key;

    std::string file = ListPictureFile(basGlobal.ImageFolder, key);
    if (file.empty()) file = PicturePath(element.Picture);
    const SkinPicture picture = LoadSkinPicture(file, screen.Scale());
    element.Shown = file.substr(std::min(basGlobal.ImageFolder.size(), file.size()));
    item.SetPicture(picture);
    item.MoveTo(Area(element, picture));
}

void Refresh(SkinScreen& screen, ScreenElement& element, int index) {
    auto& item = ItemOf<PictureItem>(element);
    if (index == screen.Highlight)
        RefreshHighlight(screen, element);
    else if (item.By == Driver::Entry)
        RefreshEntry(screen, element);
    else if (item.By == Driver::State)
        item.SetVisible(ImageState(element.Evaluated));
}

std::string Shown(const ScreenElement& element) {
    return ItemOf<PictureItem>(element).By == Driver::Entry ? element.Shown : element.Picture;
}

void Check(const SkinElement& element, const Complain& complain) {
    if (element.Picture.empty() && !EqualsNoCase(element.Function, kEntryWord))
        complain("Picture", "without this picture nothing is seen");
}

}  // namespace

extern constinit const SkinKind kImageKind{
    .Word = "Image",
    .Meaning = "a picture",
    .Keys = kKeys,
    .Role = &kPictureRole,
    .FunctionSample = "picture",
    .Depth = 10,
    .Turn = 70,
    .Build = Build,
    .Refresh = Refresh,
    .Shown = Shown,
    .Check = Check,
};

}  // namespace dravik
