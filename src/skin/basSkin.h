#pragma once

#include <string>

/// The skin engine: builds pages and boxes from the skin file onto the main window.
namespace dravik {

class SkinScreen;

// Lower rooms reach these as upCalls, which InitSkin sets.

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

/// Gives the loader the screen to build on (null: none) and connects tiSkinReload.
void InitSkin(SkinScreen* screen);

/// The screen given to InitSkin.
SkinScreen* CurrentScreen();

/// Builds the page, and a box that is open over it, anew from the skin file. Their commands are not
/// run.
void RebuildPage();

/// The tick of tiMain: gives every element in use its current value, kind by kind in their turns.
void RefreshScreen(SkinScreen& screen);

/// The tick of tiSkinReload: the deferred keys of the page that was loaded last.
void FinishPage();

}  // namespace dravik
