// echo-client.exe LINUX_PID METHOD VIA APARTMENT JOBS CALLS
//   METHOD progress | ping | values | text | strings | numbers | answer | optionals; VIA vtable |
//   dispatch; APARTMENT mta | sta.
// Makes JOBS connections to the server one after the other, each with CALLS calls as
// fast as they go and released at its end, like the engine's jobs. After each job it
// waits, then prints the server's resident and anonymous resident KB and threads read
// from the Linux side (/proc/LINUX_PID/status through the Z: drive).
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>

#include <tlhelp32.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "Echo_h.h"

namespace {

std::string Status(const char* pid) {
  std::string path = std::string("Z:\\proc\\") + pid + "\\status";
  FILE* f = std::fopen(path.c_str(), "r");
  if (!f) return "no status";
  char line[256];
  std::string rss = "?", anon = "?", threads = "?";
  while (std::fgets(line, sizeof line, f)) {
    if (std::strncmp(line, "VmRSS:", 6) == 0) rss = std::to_string(std::atol(line + 6));
    if (std::strncmp(line, "RssAnon:", 8) == 0) anon = std::to_string(std::atol(line + 8));
    if (std::strncmp(line, "Threads:", 8) == 0) threads = std::to_string(std::atol(line + 8));
  }
  std::fclose(f);
  return "rss " + rss + " anon " + anon + " threads " + threads;
}

// The server's handles from the system's handle table, by the type number Wine gives
// each: "handles N (type:count ...)".
std::string Handles() {
  DWORD pid = 0;
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL ok = Process32FirstW(snapshot, &entry); ok; ok = Process32NextW(snapshot, &entry))
    if (!lstrcmpiW(entry.szExeFile, L"echo-server.exe")) pid = entry.th32ProcessID;
  CloseHandle(snapshot);
  struct Entry {
    USHORT process, backTrace;
    UCHAR type, attributes;
    USHORT value;
    PVOID object;
    ULONG access;
  };
  using Query = LONG(WINAPI*)(ULONG, PVOID, ULONG, PULONG);
  auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  std::vector<unsigned char> buffer(1 << 20);
  ULONG needed = 0;
  if (!query || query(16, buffer.data(), static_cast<ULONG>(buffer.size()), &needed) != 0)
    return "handles ?";
  const ULONG count = *reinterpret_cast<ULONG*>(buffer.data());
  const Entry* entries = reinterpret_cast<const Entry*>(buffer.data() + sizeof(void*));
  std::map<int, int> byType;
  int mine = 0;
  for (ULONG i = 0; i < count; ++i)
    if (entries[i].process == static_cast<USHORT>(pid)) {
      ++mine;
      ++byType[entries[i].type];
    }
  std::string text = "handles " + std::to_string(mine) + " (";
  for (auto [type, n] : byType) text += std::to_string(type) + ":" + std::to_string(n) + " ";
  return text + ")";
}

HRESULT Call(IEcho* echo, const char* method, bool dispatch) {
  BSTR a = SysAllocString(L"C:\\Users\\Public\\Documents\\Report 1.docx");
  BSTR f = SysAllocString(L"1.2 MB/s");
  BSTR j = SysAllocString(L"00:01:02");
  BSTR k = SysAllocString(L"00:10:00");
  double b = 1e6, c = 2.5e7, d = 5e5, e = 1e6;
  short g = 50, h = 4, l = 1, m = 0;
  float i = 0;
  HRESULT hr = E_FAIL;
  VARIANT result;
  VariantInit(&result);
  if (!dispatch) {
    short s = 0;
    if (!std::strcmp(method, "progress"))
      hr = echo->Progress(&a, &b, &c, &d, &e, &f, &g, &h, &i, &j, &k, &l, &m, 1, &result);
    else if (!std::strcmp(method, "ping"))
      hr = echo->Ping();
    else if (!std::strcmp(method, "values"))
      hr = echo->Values(b, c, g, 1, &s);
    else if (!std::strcmp(method, "text"))
      hr = echo->Text(a, &s);
    else if (!std::strcmp(method, "strings"))
      hr = echo->Strings(&a, &f, &j, &k);
    else if (!std::strcmp(method, "numbers"))
      hr = echo->Numbers(&b, &g, &i);
    else if (!std::strcmp(method, "answer"))
      hr = echo->Answer(&result);
    else
      hr = echo->Optionals(&m, 1);
  } else {
    VARIANTARG args[14];
    for (auto& v : args) VariantInit(&v);
    auto ref = [&](int index, VARTYPE type, void* p) {
      args[13 - index].vt = VT_BYREF | type;
      args[13 - index].byref = p;
    };
    ref(0, VT_BSTR, &a);
    ref(1, VT_R8, &b);
    ref(2, VT_R8, &c);
    ref(3, VT_R8, &d);
    ref(4, VT_R8, &e);
    ref(5, VT_BSTR, &f);
    ref(6, VT_I2, &g);
    ref(7, VT_I2, &h);
    ref(8, VT_R4, &i);
    ref(9, VT_BSTR, &j);
    ref(10, VT_BSTR, &k);
    ref(11, VT_I2, &l);
    ref(12, VT_I2, &m);
    args[0].vt = VT_I4;
    args[0].lVal = 1;
    DISPPARAMS p{};
    p.rgvarg = args;
    p.cArgs = 14;
    UINT err = 0;
    hr =
        echo->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &p, &result, nullptr, &err);
  }
  VariantClear(&result);
  SysFreeString(a);
  SysFreeString(f);
  SysFreeString(j);
  SysFreeString(k);
  return hr;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 7) return 2;
  const char* pid = argv[1];
  const char* method = argv[2];
  const bool dispatch = !std::strcmp(argv[3], "dispatch");
  const bool mta = !std::strcmp(argv[4], "mta");
  const int jobs = std::atoi(argv[5]);
  const int calls = std::atoi(argv[6]);
  CoInitializeEx(nullptr, mta ? COINIT_MULTITHREADED : COINIT_APARTMENTTHREADED);
  std::printf("before %s %s\n", Status(pid).c_str(), Handles().c_str());
  std::fflush(stdout);
  for (int job = 1; job <= jobs; ++job) {
    IEcho* echo = nullptr;
    HRESULT hr = CoCreateInstance(CLSID_Echo, nullptr, CLSCTX_LOCAL_SERVER, IID_IEcho,
                                  reinterpret_cast<void**>(&echo));
    if (FAILED(hr)) {
      std::printf("connect failed 0x%08lx\n", static_cast<unsigned long>(hr));
      return 1;
    }
    int failed = 0;
    for (int n = 0; n < calls; ++n) failed += FAILED(Call(echo, method, dispatch));
    echo->Release();
    CoFreeUnusedLibraries();
    Sleep(3000);
    std::printf("job %d calls %d failed %d %s %s\n", job, job * calls, failed, Status(pid).c_str(),
                Handles().c_str());
    std::fflush(stdout);
  }
  CoUninitialize();
  return 0;
}
