#include <QImage>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "FuzzTarget.h"
#include "app/frMain.h"
#include "core/basGlobal.h"
#include "platform/Pointer.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "skin/check/CheckSkin.h"
#include "skin/message/ShowMessage.h"
#include "skin/message/frWarning.h"

namespace dravik::fuzz {
namespace {

constexpr std::size_t kMostInput = 24;
constexpr Qt::Key kKeys[] = {Qt::Key_Left,   Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down,
                             Qt::Key_Return, Qt::Key_Tab,   Qt::Key_Escape, Qt::Key_X};

std::string fault;  ///< what the loader has said last

/// Says yes to every message and looks at what it says.
void AnswerMessage() {
    frWarning* dialog = MessageDialog();
    if (dialog == nullptr || !dialog->IsOpen()) return;
    const std::string text = dialog->Message();
    if (text.starts_with("Skin Config Error ")) {
        Require(text.starts_with("Skin Config Error a.ini [") && text.find("] ") != text.npos &&
                    text.find("\r\n") != text.npos,
                "a fault names file, section and key", text);
        fault = text;
    }
    dialog->Answer(kAnswerYes);
}

void MakeFolder() {
    static const bool made = [] {
        QImage picture(64, 64, QImage::Format_ARGB32);
        picture.fill(Qt::blue);
        WriteFile("skins/pics/b.png", "");
        picture.save(QString::fromStdString(Folder() / "skins/pics/b.png"));
        WriteFile("skins/pics/half.png", Folder().Read("skins/pics/b.png").substr(0, 60));
        return true;
    }();
    std::filesystem::remove_all(Folder() / "save");  // pictures of charts
    if (!made) std::abort();
}

/// Keys and touches as the second part of the input has them: a byte for what, two for where.
void Use(frMain& window, std::string_view input) {
    input = input.substr(0, kMostInput);
    for (; input.size() >= 3 && !basGlobal.Closing; input.remove_prefix(3)) {
        const auto part = [&input](std::size_t i) { return static_cast<unsigned char>(input[i]); };
        const QPoint place(part(1) * window.width() / 256, part(2) * window.height() / 256);
        if (part(0) % 2 == 0)
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
        else
            QTest::keyClick(window.windowHandle(), kKeys[part(0) / 2 % std::size(kKeys)]);
        if (!basGlobal.Closing) RefreshScreen(window.Screen());
    }
}

}  // namespace

void Run(std::string_view input) {
    basGlobal = GlobalState{};
    fault.clear();
    MakeFolder();
    WriteFile("Dravik.ini", "[Options]\nSkin=a\n[Folders]\nmedia=home\n");
    WriteFile("skins/a.ini", "[General]\nImagefolder=pics\n" + std::string(TakePart(input)));
    frMain window;
    basGlobal.tiStartup.SetInterval(1);
    QTimer answers;
    answers.callOnTimeout(AnswerMessage);
    answers.start(0);
    window.Start({Folder().Path(), {}, true, QSize(320, 240)});
    for (FormTimer* timer : {&basGlobal.tiMain, &basGlobal.tiAux, &basGlobal.tiHardware})
        timer->SetEnabled(false);
    if (!basGlobal.Closing) {
        const bool sound = CheckSkin().empty();
        RefreshScreen(window.Screen());
        FinishPage();
        ToggleBox("box");
        window.grab();
        Use(window, input.empty() ? std::string_view("\1xx\x0bxx\2\x80\x80\x09xx") : input);
        LoadSkinPage("freeze", false);
        Require(!sound || fault.empty(), "the checker finds what the loader reports", fault);
    }
    ForgetPointerOverride();
}

}  // namespace dravik::fuzz
