#pragma once

#include <string>

/// What commands ask of the skin engine.
namespace dravik {

/// Builds a page of the skin, or (box) a box over the current page.
void LoadSkinPage(const std::string& name, bool box);

/// Opens the box of that name when none is open; otherwise closes the open one.
void ToggleBox(const std::string& name);

/// Hides the box container and loads the current page again.
void CloseBox();

/// True while a box is open over the page.
bool BoxOpen();

/// Number of whole rows of the list that was built last on the page; 0 when there is none.
int ListPageSize();

/// Lets tiDTCScroll run while the page shows the trouble-code list and there is a code in it.
void SwitchCodeTicker();

/// Clears the samples of chart `index`.
void ClearChart(int index);

/// One key of the current skin file: at most 63 bytes, empty when missing.
std::string ReadSkinValue(const std::string& section, const std::string& key);

}  // namespace dravik
