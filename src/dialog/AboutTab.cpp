#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QUrl>
#include <QUrlQuery>
#include <QVBoxLayout>

#include "dialog/DialogControls.h"
#include "dialog/InfoTabs.h"
#include "dialog/SettingsLook.h"
#include "skin/ProgramTitle.h"

namespace dravik {

namespace {

constexpr const char* kPurpose =
    "Turns a touch-screen computer in a car into an instrument panel and a diagnostic tool.";
constexpr const char* kCredits =
    "Made by the people of the Dravik project: program, skins, languages, documentation and "
    "tests. Thanks to everyone who tried it in a car and reported what they saw.";
constexpr const char* kMailSubject = "Dravik Software";

QUrl MailAddress() {
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(QStringLiteral(DRAVIK_EMAIL));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("subject"), QString::fromLatin1(kMailSubject));
    url.setQuery(query);
    return url;
}

/// A button, so that a finger and the keyboard reach it like any other.
QPushButton* MakeLink(const char* name, const QString& text, const QUrl& target) {
    QPushButton* link = MakeButton(name, text);
    link->setProperty("link", true);
    link->setCursor(Qt::PointingHandCursor);
    link->setToolTip(target.toString());
    QObject::connect(link, &QPushButton::clicked, link,
                     [target] { QDesktopServices::openUrl(target); });
    return link;
}

}  // namespace

QWidget* MakeAboutTab() {
    auto* page = new QWidget;
    QLabel* title = MakeLabel(Shown(ProgramTitle()));
    title->setObjectName(QStringLiteral("lTitle"));
    QLabel* credits = MakeLabel(InWords(kPurpose) + QStringLiteral("\n\n") + InWords(kCredits));
    credits->setObjectName(QStringLiteral("lCredits"));
    credits->setWordWrap(true);

    const QString homepage = QStringLiteral(DRAVIK_HOMEPAGE);
    const QString forum = QStringLiteral(DRAVIK_FORUM);
    const QString email = QStringLiteral(DRAVIK_EMAIL);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(Px(10), Px(16), Px(10), Px(12));
    column->setSpacing(Px(10));
    column->addWidget(title);
    column->addWidget(credits);
    column->addSpacing(Px(12));
    column->addWidget(MakeLink("lblHyperlink", homepage, QUrl(homepage)), 0, Qt::AlignLeft);
    column->addWidget(MakeLink("lblForum", forum, QUrl(forum)), 0, Qt::AlignLeft);
    column->addWidget(MakeLink("lblEmail", email, MailAddress()), 0, Qt::AlignLeft);
    column->addStretch();

    auto* tab = new QScrollArea;
    FillTab(tab, page);
    return tab;
}

}  // namespace dravik
