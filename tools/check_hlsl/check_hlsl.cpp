// Compiles HLSL programs with the d3dcompiler_47.dll of the system it runs on, which under Wine is Wine's own compiler,
// and says which pass. Usage: check_hlsl TARGET=FILE... Exit code: how many failed.
#include <windows.h>

#include <d3dcompiler.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace {

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Finds what a file includes beside the including file.
class Includes : public ID3DInclude {
public:
    explicit Includes(std::filesystem::path folder) : root_(std::move(folder)) {}

    HRESULT STDMETHODCALLTYPE Open(D3D_INCLUDE_TYPE, LPCSTR name, LPCVOID parent, LPCVOID* data, UINT* size) override {
        const auto known = folders_.find(parent);
        const std::filesystem::path path = (known == folders_.end() ? root_ : known->second) / name;
        if (!std::filesystem::exists(path)) return E_FAIL;
        auto* const text = new std::string(ReadAll(path));
        texts_[text->data()] = text;
        folders_[text->data()] = path.parent_path();
        *data = text->data();
        *size = static_cast<UINT>(text->size());
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Close(LPCVOID data) override {
        delete texts_[data];
        texts_.erase(data);
        folders_.erase(data);
        return S_OK;
    }

private:
    std::filesystem::path root_;
    std::map<const void*, std::string*> texts_;
    std::map<const void*, std::filesystem::path> folders_;
};

/// The messages end at the first zero or at the blob's end, whichever is first.
void Print(ID3DBlob& messages) {
    const auto* const text = static_cast<const char*>(messages.GetBufferPointer());
    std::printf("    %.*s\n", static_cast<int>(messages.GetBufferSize()), text);
}

}  // namespace

int main(int count, char** words) {
    const HMODULE library = LoadLibraryW(L"d3dcompiler_47.dll");
    if (!library) return std::fprintf(stderr, "no d3dcompiler_47.dll\n"), 100;
    const auto compile = reinterpret_cast<pD3DCompile>(reinterpret_cast<void*>(GetProcAddress(library, "D3DCompile")));
    int failed = 0;
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        const std::size_t equals = word.find('=');
        if (equals == std::string::npos) return std::fprintf(stderr, "TARGET=FILE expected\n"), 101;
        const std::string target = word.substr(0, equals);
        const std::filesystem::path path = word.substr(equals + 1);
        const std::string source = ReadAll(path);
        Includes includes(path.parent_path());
        ID3DBlob* code = nullptr;
        ID3DBlob* messages = nullptr;
        const HRESULT result = compile(source.data(), source.size(), path.filename().string().c_str(), nullptr,
                                       &includes, "main", target.c_str(), 0, 0, &code, &messages);
        const bool passed = SUCCEEDED(result) && code;
        std::printf("%s %s %s: 0x%08X, %u bytes\n", passed ? "pass" : "FAIL", target.c_str(),
                    path.filename().string().c_str(), static_cast<unsigned>(result),
                    code ? static_cast<unsigned>(code->GetBufferSize()) : 0U);
        if (messages) Print(*messages);
        if (code) code->Release();
        if (messages) messages->Release();
        if (!passed) ++failed;
        std::fflush(stdout);
    }
    return failed;
}
