#include <QApplication>

#include "FuzzTarget.h"

/// Called once, before the first input.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("HOME", QByteArray::fromStdString(dravik::fuzz::Folder() / "home"));
    dravik::fuzz::WriteFile("home/song.mp3", "");
    static auto* application = new QApplication(*argc, *argv);  // outlives what the fuzzer does
    return application == nullptr;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    dravik::fuzz::Run({reinterpret_cast<const char*>(data), size});
    return 0;
}
