#include "platform/ShellFolder.h"

#include <memory>
#include <type_traits>

#include "platform/WindowsApi.h"
// They need the system's basic types, so they come last.
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>
#include <shlwapi.h>

namespace dravik {
namespace {

/// The shell's objects may be used while one of these is alive.
class ShellScope {
 public:
    ShellScope() : ready_(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ShellScope() {
        if (ready_) ::CoUninitialize();
    }
    ShellScope(const ShellScope&) = delete;
    ShellScope& operator=(const ShellScope&) = delete;

 private:
    bool ready_;
};

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Object>
using ShellObject = std::unique_ptr<Object, Release>;

struct FreeMemory {
    void operator()(void* memory) const { ::CoTaskMemFree(memory); }
};
using ItemId = std::unique_ptr<std::remove_pointer_t<PIDLIST_ABSOLUTE>, FreeMemory>;
using ShellText = std::unique_ptr<wchar_t, FreeMemory>;

/// Null when there is no such item, or when it is no folder.
ItemId FolderId(const std::string& folder) {
    PIDLIST_ABSOLUTE id = nullptr;
    if (folder == kTopFolder) {
        ::SHGetSpecialFolderLocation(nullptr, CSIDL_DESKTOP, &id);
        return ItemId(id);
    }
    SFGAOF attributes = 0;
    const std::wstring name = ToWide(folder);
    if (FAILED(::SHParseDisplayName(name.c_str(), nullptr, &id, SFGAO_FOLDER, &attributes)))
        return nullptr;
    ItemId item(id);
    if ((attributes & SFGAO_FOLDER) == 0) return nullptr;
    return item;
}

std::string PathOf(PCIDLIST_ABSOLUTE id) {
    wchar_t* path = nullptr;
    if (FAILED(::SHGetNameFromIDList(id, SIGDN_DESKTOPABSOLUTEPARSING, &path))) return {};
    return FromWide(ShellText(path).get());
}

std::string NameOf(IShellFolder* folder, PCUITEMID_CHILD item, SHGDNF form) {
    STRRET name{};
    wchar_t* text = nullptr;
    if (FAILED(folder->GetDisplayNameOf(item, form, &name)) ||
        FAILED(::StrRetToStrW(&name, item, &text)))
        return {};
    return FromWide(ShellText(text).get());
}

std::string TypeOf(PCIDLIST_ABSOLUTE folder, PCUITEMID_CHILD item) {
    const ItemId whole(::ILCombine(folder, item));
    SHFILEINFOW info{};
    const auto* name = reinterpret_cast<const wchar_t*>(whole.get());
    if (!::SHGetFileInfoW(name, 0, &info, sizeof info, SHGFI_PIDL | SHGFI_TYPENAME)) return {};
    return FromWide(info.szTypeName);
}

ShellItem DescribeItem(IShellFolder* folder, PCIDLIST_ABSOLUTE folderId, PCUITEMID_CHILD id) {
    ShellItem item;
    SFGAOF attributes = SFGAO_FOLDER;
    item.IsFolder =
        SUCCEEDED(folder->GetAttributesOf(1, &id, &attributes)) && (attributes & SFGAO_FOLDER);
    // The name for show may lack the extension of a file, which tells media from other files.
    item.Name =
        NameOf(folder, id, item.IsFolder ? SHGDN_INFOLDER : SHGDN_INFOLDER | SHGDN_FORPARSING);
    item.Path = NameOf(folder, id, SHGDN_FORPARSING);
    if (item.IsFolder) item.Type = TypeOf(folderId, id);
    return item;
}

}  // namespace

ShellListing ReadShellFolder(const std::string& folder) {
    const ShellScope scope;
    ShellListing listing;
    const ItemId id = FolderId(folder);
    if (!id) return listing;
    IShellFolder* bound = nullptr;
    if (FAILED(::SHBindToObject(nullptr, id.get(), nullptr, IID_PPV_ARGS(&bound)))) return listing;
    const ShellObject<IShellFolder> shell(bound);

    IEnumIDList* enumeration = nullptr;
    if (FAILED(shell->EnumObjects(nullptr, SHCONTF_FOLDERS | SHCONTF_NONFOLDERS, &enumeration)))
        return listing;
    const ShellObject<IEnumIDList> items(enumeration);
    HRESULT result = S_FALSE;
    PITEMID_CHILD child = nullptr;
    while (items && (result = items->Next(1, &child, nullptr)) == S_OK) {
        const ItemId owned(reinterpret_cast<PIDLIST_ABSOLUTE>(child));
        listing.Items.push_back(DescribeItem(shell.get(), id.get(), child));
    }
    listing.Complete = result == S_FALSE;  // an empty folder may have no enumeration at all
    return listing;
}

std::optional<std::string> ParentFolder(const std::string& folder) {
    if (folder == kTopFolder) return std::nullopt;
    const ShellScope scope;
    if (const ItemId id = FolderId(folder)) {
        ::ILRemoveLastID(id.get());
        return ILIsEmpty(id.get()) ? std::string(kTopFolder) : PathOf(id.get());
    }
    // Of a folder that has gone, only the name tells.
    const std::size_t end = folder.find_last_not_of('\\');
    if (end == std::string::npos) return kTopFolder;
    const std::size_t separator = folder.rfind('\\', end);
    if (separator == std::string::npos) return kTopFolder;
    const bool drive = separator > 0 && folder[separator - 1] == ':';
    return folder.substr(0, drive ? separator + 1 : separator);
}

bool ShellFolderExists(const std::string& folder) {
    const ShellScope scope;
    return FolderId(folder) != nullptr;
}

/// The system itself ends a circle of links at the longest path that it takes.
std::string BrowsedPath(const std::string& folder) {
    if (folder == kTopFolder || folder.starts_with("::")) return folder;  // no part of any drive
    wchar_t path[32768];
    const DWORD length = ::GetFullPathNameW(ToWide(folder).c_str(), 32768, path, nullptr);
    return length > 0 ? FromWide(std::wstring_view(path, length)) : folder;
}

}  // namespace dravik
