#include <filesystem>

#include "dialog/DialogFixture.h"
#include "platform/Paths.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;

/// A program with documents beside it, and a viewer of the system that notes down what it is to
/// show.
class Documents : public DialogTest {
 protected:
    Documents() {
        fs::create_directory(beside_);
        EXPECT_TRUE(WriteFileAnew(first_, "<p>The first page.</p>"));
        folder_.Write("bin/xdg-open", "#!/bin/sh\nprintf %s \"$1\" > '" + (folder_ / "part") +
                                          "'\n/bin/mv '" + (folder_ / "part") + "' '" +
                                          (folder_ / "opened") + "'\n");
        fs::permissions(folder_ / "bin/xdg-open", fs::perms(0755));
    }
    ~Documents() override {
        qputenv("PATH", path_);
        fs::remove_all(beside_);
    }

    const std::string beside_ = JoinPath(ExecutableFolder(), "docs");
    const std::string first_ = JoinPath(beside_, "index.html");

 private:
    const QByteArray path_ = qgetenv("PATH");
};

TEST_F(Documents, OpenInTheSystemsViewerOrSayWhereTheyLie) {
    Open();
    ShowTab(3);
    qputenv("PATH", QByteArray::fromStdString(folder_ / "bin"));
    Click("bDocuments");
    EXPECT_TRUE(QTest::qWaitFor([this] { return FileExists(folder_ / "opened"); }));
    EXPECT_EQ(folder_.Read("opened"), first_);

    EXPECT_EQ(TextOf("bDocuments"), "Documents");
    qputenv("PATH", QByteArray::fromStdString(folder_ / "nothing"));
    Click("bDocuments");
    EXPECT_EQ(TextOf("bDocuments"), first_);
}

}  // namespace
}  // namespace dravik
