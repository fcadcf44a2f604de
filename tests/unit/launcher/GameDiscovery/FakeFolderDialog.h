// A folder dialog that shows nothing: it records what is asked of it and answers as told.
#pragma once

#include "launcher/GameDiscovery/FolderDialogSystem.h"

#include <map>
#include <string>
#include <vector>

/// What the fakes share: the calls so far, and the results of those that are not to succeed.
struct FakeDialogLog {
    std::vector<std::string> calls;
    std::map<std::string, HRESULT> results;
    int objects = 0;  ///< Interfaces that are still held.

    HRESULT Record(const std::string& call) {
        calls.push_back(call);
        const auto found = results.find(call);
        return found == results.end() ? S_OK : found->second;
    }
};

/// Counts references and tells the log of its life.
template <class Interface>
class FakeObject : public Interface {
public:
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    FakeObject(FakeDialogLog& log, const char* name) : log_(log), name_(name) { ++log_.objects; }
    virtual ~FakeObject() {
        --log_.objects;
        log_.calls.push_back(std::string("~") + name_);
    }

    FakeDialogLog& log_;

private:
    const char* name_;
    ULONG references_ = 1;
};

class FakeItem final : public FakeObject<IShellItem> {
public:
    FakeItem(FakeDialogLog& log, std::wstring path) : FakeObject(log, "Item"), path_(std::move(path)) {}

    HRESULT STDMETHODCALLTYPE GetDisplayName(SIGDN form, LPWSTR* name) override {
        *name = nullptr;
        const HRESULT result = log_.Record("GetDisplayName");
        if (FAILED(result)) return result;
        if (form != SIGDN_FILESYSPATH) return E_INVALIDARG;
        *name = static_cast<LPWSTR>(CoTaskMemAlloc((path_.size() + 1) * sizeof(wchar_t)));
        path_.copy(*name, path_.size());
        (*name)[path_.size()] = L'\0';
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE BindToHandler(IBindCtx*, REFGUID, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetParent(IShellItem**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAttributes(SFGAOF, SFGAOF*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Compare(IShellItem*, SICHINTF, int*) override { return E_NOTIMPL; }

    const std::wstring& Path() const { return path_; }

private:
    ~FakeItem() override = default;

    std::wstring path_;
};

/// What was asked of a dialog, and what it lets the user pick.
struct FakeDialogState {
    FILEOPENDIALOGOPTIONS options = 0;
    std::wstring title;
    std::wstring label;
    std::wstring startFolder;
    HWND owner = nullptr;
    std::wstring pick;
};

class FakeDialog final : public FakeObject<IFileOpenDialog> {
public:
    FakeDialog(FakeDialogLog& log, FakeDialogState& state) : FakeObject(log, "Dialog"), state_(state) {}

    HRESULT STDMETHODCALLTYPE SetOptions(FILEOPENDIALOGOPTIONS options) override {
        state_.options = options;
        return log_.Record("SetOptions");
    }
    HRESULT STDMETHODCALLTYPE SetTitle(LPCWSTR title) override {
        state_.title = title;
        return log_.Record("SetTitle");
    }
    HRESULT STDMETHODCALLTYPE SetOkButtonLabel(LPCWSTR label) override {
        state_.label = label;
        return log_.Record("SetOkButtonLabel");
    }
    HRESULT STDMETHODCALLTYPE SetFolder(IShellItem* folder) override {
        state_.startFolder = static_cast<FakeItem*>(folder)->Path();
        return log_.Record("SetFolder");
    }
    HRESULT STDMETHODCALLTYPE Show(HWND owner) override {
        state_.owner = owner;
        return log_.Record("Show");
    }
    HRESULT STDMETHODCALLTYPE GetResult(IShellItem** item) override {
        *item = nullptr;
        const HRESULT result = log_.Record("GetResult");
        if (SUCCEEDED(result)) *item = new FakeItem(log_, state_.pick);
        return result;
    }

    // The picker has no use for these; a call shows itself as a failed expectation on the order of calls.
    HRESULT STDMETHODCALLTYPE SetFileTypes(UINT, const COMDLG_FILTERSPEC*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetFileTypeIndex(UINT) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetFileTypeIndex(UINT*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE Advise(IFileDialogEvents*, DWORD*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetOptions(FILEOPENDIALOGOPTIONS*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetDefaultFolder(IShellItem*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetFolder(IShellItem**) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetCurrentSelection(IShellItem**) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetFileName(LPCWSTR) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetFileName(LPWSTR*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetFileNameLabel(LPCWSTR) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE AddPlace(IShellItem*, FDAP) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetDefaultExtension(LPCWSTR) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE Close(HRESULT) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetClientGuid(REFGUID) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE ClearClientData() override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE SetFilter(IShellItemFilter*) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetResults(IShellItemArray**) override { return Unexpected(); }
    HRESULT STDMETHODCALLTYPE GetSelectedItems(IShellItemArray**) override { return Unexpected(); }

private:
    ~FakeDialog() override = default;

    HRESULT Unexpected() {
        log_.calls.emplace_back("a method without a use");
        return E_NOTIMPL;
    }

    FakeDialogState& state_;
};

/// A system whose calls are recorded under their own names; results that are set in the log replace success.
class FakeFolderDialogSystem final : public GameDiscovery::FolderDialogSystem {
public:
    FakeDialogLog log;
    FakeDialogState dialog;
    DWORD apartmentModel = 0;
    std::wstring parsedPath;

    HRESULT CoInitializeEx(DWORD model) override {
        apartmentModel = model;
        return log.Record("CoInitializeEx");
    }
    void CoUninitialize() override { log.Record("CoUninitialize"); }
    HRESULT CoCreateInstance(REFCLSID classId, DWORD context, REFIID iid, void** object) override {
        *object = nullptr;
        const HRESULT result = log.Record("CoCreateInstance");
        if (FAILED(result)) return result;
        if (classId != CLSID_FileOpenDialog || context != CLSCTX_INPROC_SERVER || iid != __uuidof(IFileOpenDialog)) {
            return E_INVALIDARG;
        }
        *object = static_cast<IFileOpenDialog*>(new FakeDialog(log, dialog));
        return S_OK;
    }
    HRESULT SHCreateItemFromParsingName(const wchar_t* path, REFIID iid, void** object) override {
        *object = nullptr;
        parsedPath = path;
        const HRESULT result = log.Record("SHCreateItemFromParsingName");
        if (FAILED(result)) return result;
        if (iid != __uuidof(IShellItem)) return E_INVALIDARG;
        *object = static_cast<IShellItem*>(new FakeItem(log, path));
        return S_OK;
    }
    bool IsWindow(HWND) override { return SUCCEEDED(log.Record("IsWindow")); }
};
