#include "win32/platform/win32_system.h"

#include <windows.h>
#include <oleauto.h>

#include <memory>

namespace tessmark::platform::win32 {

namespace {

struct ComReleaser {
    void operator()(IUnknown* object) const { object->Release(); }
};

struct ComApartment {
    HRESULT result = CoInitialize(nullptr);
    ~ComApartment() {
        if (SUCCEEDED(result)) CoUninitialize();
    }
};

std::wstring Wide(const std::string& text) {
    const int length = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide.data(), length);
    wide.resize(static_cast<std::size_t>(length > 0 ? length - 1 : 0));
    return wide;
}

}  // namespace

std::int32_t Win32System::GetVersionExA(OsVersionInfoA* info) {
    static_assert(sizeof(OSVERSIONINFOA) == sizeof(OsVersionInfoA));
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = info->dwOSVersionInfoSize;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const BOOL ok = ::GetVersionExA(&version);
#pragma GCC diagnostic pop
    if (!ok) return 0;
    info->dwMajorVersion = version.dwMajorVersion;
    info->dwMinorVersion = version.dwMinorVersion;
    info->dwBuildNumber = version.dwBuildNumber;
    info->dwPlatformId = version.dwPlatformId;
    memcpy(info->szCSDVersion, version.szCSDVersion, sizeof info->szCSDVersion);
    return 1;
}

std::string Win32System::Now() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char date[128] = {};
    char time[128] = {};
    GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &now, nullptr, date, sizeof date);
    GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &now, nullptr, time, sizeof time);
    return std::string(date) + " " + time;
}

std::int32_t Win32System::CallByMoniker(const std::string& moniker, const std::string& method,
                                        const std::vector<LateBoundArg>& args) {
    ComApartment apartment;
    IDispatch* raw = nullptr;
    if (HRESULT got = CoGetObject(Wide(moniker).c_str(), nullptr, IID_IDispatch, reinterpret_cast<void**>(&raw));
        FAILED(got))
        return got;
    std::unique_ptr<IDispatch, ComReleaser> object(raw);

    std::wstring name = Wide(method);
    LPOLESTR names[] = {name.data()};
    DISPID id = 0;
    if (HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id); FAILED(found))
        return found;

    // Arguments go in last to first.
    std::vector<VARIANT> values(args.size());
    for (std::size_t i = 0; i < args.size(); ++i) {
        VARIANT& value = values[args.size() - 1 - i];
        VariantInit(&value);
        if (const auto* text = std::get_if<std::string>(&args[i])) {
            value.vt = VT_BSTR;
            value.bstrVal = SysAllocString(Wide(*text).c_str());
        } else {
            value.vt = VT_I2;
            value.iVal = std::get<std::int16_t>(args[i]);
        }
    }
    DISPPARAMS parameters{values.data(), nullptr, static_cast<UINT>(values.size()), 0};
    VARIANT result;
    VariantInit(&result);
    const HRESULT called =
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, nullptr, nullptr);
    VariantClear(&result);  // the result is not looked at
    for (VARIANT& value : values) VariantClear(&value);
    return FAILED(called) ? called : 0;
}

}  // namespace tessmark::platform::win32
