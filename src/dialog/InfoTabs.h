#pragma once

class QWidget;

namespace dravik {

/// The tab "Functions": the standard function names with their PIDs and sources, to look up.
QWidget* MakeFunctionsTab();

/// The tab "About": title and version, credits and addresses.
QWidget* MakeAboutTab();

}  // namespace dravik
