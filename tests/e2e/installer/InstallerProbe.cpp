// installer_probe.exe: what the installer test asks of Windows inside its prefix, one
// command a run, the answers on stdout as "name=value" lines; exit 0 when it could ask.
//   call          the class by its ProgID: GetProperTime(3909) through IDispatch and
//                 through the interface's vtable, and the image of the server process
//   shortcut LNK  the target, arguments and working folder of a shortcut
//   tray NAME     the windows of the program NAME that have a notification-area icon
//   processes NAME every running process whose image is NAME, with its working set
//                 ("process=BYTES IMAGE"; bytes 0 when it could not be read)
#include <objbase.h>
#include <oleauto.h>
#include <psapi.h>
#include <shellapi.h>
#include <shlobj.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Process.h"
#include "QVMonitor_h.h"

namespace {

void Print(const wchar_t* name, const std::wstring& value) {
  std::wprintf(L"%ls=%ls\n", name, value.c_str());
  std::fflush(stdout);
}

int Call() {
  CLSID clsid{};
  HRESULT hr = CLSIDFromProgID(L"QVMonitor.IMonitor", &clsid);
  Print(L"progid", SUCCEEDED(hr) ? L"found" : L"missing");
  if (FAILED(hr)) return 1;
  platform::win32::ComPtr<IDispatch> object;
  hr = CoCreateInstance(clsid, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, object.OutVoid());
  wchar_t code[16];
  std::swprintf(code, 16, L"0x%08lx", static_cast<unsigned long>(hr));
  Print(L"create", code);
  if (FAILED(hr) || !object) return 1;

  DISPID id = 0;
  LPOLESTR name = const_cast<LPOLESTR>(L"GetProperTime");
  if (SUCCEEDED(object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id))) {
    VARIANT arg;
    VariantInit(&arg);
    arg.vt = VT_I4;
    arg.lVal = 3909;
    DISPPARAMS params{&arg, nullptr, 1, 0};
    VARIANT result;
    VariantInit(&result);
    hr = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &result,
                        nullptr, nullptr);
    if (SUCCEEDED(hr) && result.vt == VT_BSTR) Print(L"dispatch", result.bstrVal);
    VariantClear(&result);
  }

  platform::win32::ComPtr<_IMonitor> monitor;
  if (SUCCEEDED(object->QueryInterface(IID__IMonitor, monitor.OutVoid())) && monitor) {
    platform::win32::UniqueBstr text;
    if (SUCCEEDED(monitor->GetProperTime(3909, text.Out())) && text) Print(L"vtable", text.Get());
  }

  for (const auto& p : e2e::FindProcesses(L"QVMonitor.exe")) Print(L"server", p.image);
  return 0;
}

int Shortcut(const wchar_t* path) {
  platform::win32::ComPtr<IShellLinkW> link;
  if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                              link.OutVoid())))
    return 1;
  platform::win32::ComPtr<IPersistFile> file;
  int rc = 1;
  if (SUCCEEDED(link->QueryInterface(IID_IPersistFile, file.OutVoid()))) {
    if (SUCCEEDED(file->Load(path, STGM_READ))) {
      wchar_t text[MAX_PATH * 2] = {};
      if (SUCCEEDED(link->GetPath(text, MAX_PATH * 2, nullptr, 0))) Print(L"target", text);
      text[0] = 0;
      link->GetArguments(text, MAX_PATH * 2);
      Print(L"arguments", text);
      text[0] = 0;
      link->GetWorkingDirectory(text, MAX_PATH * 2);
      Print(L"folder", text);
      rc = 0;
    }
  }
  return rc;
}

// A window of the program `exeName` that has a notification-area icon: the taskbar
// answers a change of nothing (NIM_MODIFY without flags) only for an icon it holds.
struct TraySearch {
  std::vector<DWORD> pids;
  int found = 0;
};

void TryWindow(HWND w, TraySearch& search) {
  DWORD pid = 0;
  GetWindowThreadProcessId(w, &pid);
  if (std::find(search.pids.begin(), search.pids.end(), pid) == search.pids.end()) return;
  NOTIFYICONDATAW data{};
  data.cbSize = sizeof(data);
  data.hWnd = w;
  data.uID = 0;
  if (!Shell_NotifyIconW(NIM_MODIFY, &data)) return;
  wchar_t cls[128] = {};
  GetClassNameW(w, cls, 128);
  Print(L"icon", cls);
  ++search.found;
}

BOOL CALLBACK TryTopLevel(HWND w, LPARAM search) {
  TryWindow(w, *reinterpret_cast<TraySearch*>(search));
  return TRUE;
}

int Tray(const wchar_t* exeName) {
  TraySearch search;
  for (const auto& p : e2e::FindProcesses(exeName)) search.pids.push_back(p.pid);
  EnumWindows(TryTopLevel, reinterpret_cast<LPARAM>(&search));
  for (HWND w = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); w;
       w = FindWindowExW(HWND_MESSAGE, w, nullptr, nullptr))
    TryWindow(w, search);
  Print(L"icons", std::to_wstring(search.found));
  return 0;
}

int Processes(const wchar_t* exeName) {
  for (const auto& p : e2e::FindProcesses(exeName)) {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof(counters);
    platform::win32::UniqueHandle h(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, p.pid));
    if (h) GetProcessMemoryInfo(h.Get(), &counters, sizeof(counters));
    Print(L"process", std::to_wstring(counters.WorkingSetSize) + L" " + p.image);
  }
  return 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 2) return 2;
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const std::wstring command = argv[1];
  int rc = 2;
  if (command == L"call") rc = Call();
  if (command == L"shortcut" && argc > 2) rc = Shortcut(argv[2]);
  if (command == L"tray" && argc > 2) rc = Tray(argv[2]);
  if (command == L"processes" && argc > 2) rc = Processes(argv[2]);
  CoUninitialize();
  return rc;
}
