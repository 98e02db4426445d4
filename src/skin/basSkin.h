#pragma once

#include "skin/PageControl.h"

/// The skin engine: builds pages and boxes from the skin file onto the main window.
namespace dravik {

class SkinScreen;

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
