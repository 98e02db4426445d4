#pragma once

#include <filesystem>
#include <string>

#include "support/SavePicture.h"
#include "support/TemporaryFolder.h"

namespace dravik {

/// A program folder with a small skin: 200 x 60 buttons below each other on the main page, a page
/// of trouble codes and a freeze page.
struct ProgramFolderWithSkin {
    TemporaryFolder Folder;

    ProgramFolderWithSkin() {
        std::filesystem::copy(TEST_DATA "/program", Folder.Path(),
                              std::filesystem::copy_options::recursive);
        std::filesystem::create_directory(Folder / "skins/test");
        SavePicture(Folder / "skins/test/up.png", 200, 60);
    }

    /// The request that clicks on a button.
    static std::string ClickOn(int number) {
        return "click 110 " + std::to_string(40 + 80 * number);
    }
};

}  // namespace dravik
