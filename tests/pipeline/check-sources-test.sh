#!/usr/bin/env bash
# Cases for tools/check-sources.pl, each on a small tree made in a temporary folder
# (a violation kept in the repository would trip the real check).
set -u
here=$(cd "$(dirname "$0")" && pwd)
checker="$here/../../tools/check-sources.pl"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

passed=0
failed=0

# newTree: a tree with three layers, base <- frame <- monitor.
newTree() {
  rm -rf "$work/t"
  mkdir -p "$work/t/src/base" "$work/t/src/frame" "$work/t/src/monitor" \
           "$work/t/src/platform/win32" "$work/t/src/app" "$work/t/tests/unit" "$work/t/tests/e2e"
  cat >"$work/t/CMakeLists.txt" <<'EOF'
qv_layer(base)
qv_layer(frame DEPS qv_base)   # comment (qv_layer(fake DEPS qv_monitor))
qv_layer(monitor
         DEPS qv_frame)
EOF
  echo '#pragma once' >"$work/t/src/base/Text.h"
  # Each declared dependency is needed by an include.
  printf '#include "base/Text.h"\n' >"$work/t/src/frame/Uses.h"
  printf '#include "frame/Uses.h"\n' >"$work/t/src/monitor/Uses.h"
}

put() { mkdir -p "$(dirname "$work/t/$1")"; printf '%s\n' "$2" >"$work/t/$1"; }

# expect NAME pass|fail [TEXT-THAT-MUST-APPEAR]
expect() {
  local name=$1 want=$2 needle=${3:-}
  local out rc
  out=$(perl "$checker" "$work/t" 2>&1); rc=$?
  local ok=1
  if [ "$want" = pass ] && [ $rc -ne 0 ]; then ok=0; fi
  if [ "$want" = fail ] && [ $rc -ne 1 ]; then ok=0; fi
  if [ -n "$needle" ] && ! grep -qF -- "$needle" <<<"$out"; then ok=0; fi
  if [ $ok -eq 1 ]; then
    passed=$((passed + 1)); echo "ok   $name"
  else
    failed=$((failed + 1)); echo "FAIL $name (exit $rc)"; sed 's/^/     /' <<<"$out"
  fi
}

newTree
put src/frame/Ok.h '#include "base/Text.h"
#include <vector>'
put src/monitor/Screen.cpp '#include "frame/Ok.h"
#include "base/Text.h"'
expect "downward and transitive includes are fine" pass "0 problems"

newTree
put src/frame/Bad.h '#pragma once

#include "monitor/Screen.h"'
expect "upward include is named with its line" fail "src/frame/Bad.h:3: layer 'frame' includes \"monitor/Screen.h\""

newTree
put src/base/Bad.h '#  include <frame/Ok.h>'
expect "upward include with angle brackets" fail "layer 'base' includes"

newTree
echo 'qv_layer(program DEPS qv_monitor)' >>"$work/t/CMakeLists.txt"
put src/program/Wiring.h '#include "monitor/Uses.h"'
put src/frame/AppState.h '#include "monitor/MonitorState.h"'
put src/monitor/MonitorState.h '#include "base/Text.h"
#include "monitor/Row.h"
#include <vector>'
put src/monitor/Row.h '#include "frame/Logs.h"'
expect "the process state holds upper state that reaches no further up" pass "0 problems"

put src/frame/Other.h '#include "monitor/MonitorState.h"'
expect "only the process state may hold upper state" fail "src/frame/Other.h:1: layer 'frame' includes"

rm "$work/t/src/frame/Other.h"
put src/monitor/Row.h '#include "base/Text.h"

#include "program/Balloon.h"'
expect "held state that reaches a layer above the holder" fail "src/monitor/Row.h:3: includes \"program/Balloon.h\"; it is held by the process state (src/frame/AppState.h:1)"

newTree
echo 'qv_layer(extra DEPS qv_monitor)' >>"$work/t/CMakeLists.txt"
put src/extra/Alone.h '#include "base/Text.h"'
expect "a declared dependency that no include needs" fail "qv_layer(extra) depends on qv_monitor, which no include of src/extra/ needs"

newTree
echo 'qv_layer(jobs DEPS qv_monitor)' >>"$work/t/CMakeLists.txt"
put src/jobs/List.h '#include "monitor/Uses.h"'
expect "one screen folder standing on another" fail "qv_layer(jobs) depends on the screen folder qv_monitor"

newTree
put src/frame/Clock.cpp '#include <windows.h>'
expect "Windows header in the logic" fail "Windows header <windows.h>"

newTree
put src/frame/Shell.cpp '#include <ShellAPI.h>'
expect "Windows header names are matched without case" fail "Windows header <ShellAPI.h>"

newTree
put src/platform/win32/Win32Clock.cpp '#include <windows.h>
static const wchar_t* kName = L"QVBackground";'
put src/app/Main.cpp '#include <windows.h>
int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) { return 0; }'
put tests/e2e/Driver.cpp '#include <windows.h>
const wchar_t c = L'"'"'x'"'"';'
expect "Windows code where it belongs" pass "0 problems"

newTree
put src/frame/Name.cpp 'const wchar_t* p = nullptr;'
expect "wchar_t in the logic" fail "src/frame/Name.cpp:1: wchar_t"

newTree
put tests/unit/NameTest.cpp 'auto s = L"abc";'
expect "wide string literal in a unit test" fail "wide literal"

newTree
put src/frame/Raw.cpp 'auto s = LR"(abc)";
auto c = L'"'"'a'"'"';'
expect "wide raw and character literals" fail "src/frame/Raw.cpp:2: wide literal"

newTree
put src/frame/Fine.cpp '// converted to wchar_t only at the Win32 edge, never L"" here
/* #include <windows.h>
   wchar_t */
auto a = u"SIZE L" u"\" L\"x";
auto b = u8"wchar_t";
auto r = uR"x(L"not wide" wchar_t)x";
long n = 1'"'"'000L;
auto url = u"http://a/*b*/";
#include "base/Text.h"
int HTML = 0; auto h = HTML;'
expect "comments, string contents and suffixes are not code" pass "0 problems"

newTree
put src/frame/Lines.cpp '/* one
two */ auto s = u"a";
auto t = uR"(x
y)";
const wchar_t* w;'
expect "line numbers survive comments and raw strings" fail "src/frame/Lines.cpp:5: wchar_t"

newTree
put bench/Bench.cpp '#include <windows.h>'
expect "benchmarks are portable too" fail "bench/Bench.cpp:1"

newTree
put src/frame/Quiet.cpp 'void A() { base::Guarded([] { Step(); }, [](const base::ErrorInfo&) {}); }
void B() {
  base::Guarded([] { Step(); },
                [&](const base::ErrorInfo& error) {
                });
}'
expect "an empty ErrorInfo handler, on one line or two" fail "src/frame/Quiet.cpp:4: empty ErrorInfo handler"
expect "the first one too" fail "src/frame/Quiet.cpp:1: empty ErrorInfo handler"

newTree
put src/frame/Swallow.cpp 'void A() {
  try { Step(); } catch (...) {
    // nothing to do
  }
}'
put tools/engine-sim/Sim.cpp '#include <windows.h>
void B() { try { Step(); } catch (const std::exception&) {} }'
expect "a catch block with only a comment, in a tool as well" fail "src/frame/Swallow.cpp:2: empty catch block"
expect "tools are checked for empty handlers" fail "tools/engine-sim/Sim.cpp:2: empty catch block"

newTree
put src/frame/Named.cpp 'void A() { base::IgnoreFailure([] { Step(); }); }
void B(AppState& app) { base::Guarded([] { Step(); }, frame::TraceFailure(app, u"Error Reason :")); }
void C() { try { Step(); } catch (...) { Recover(); } }
void D() { base::Guarded([] { Step(); }, [&](const base::ErrorInfo& e) { Trace(e); }); }
auto s = u"catch (...) {}";  // catch (...) {}'
put tools/web-standin/Standin.cpp '#include <windows.h>
static const wchar_t* k = L"x";'
expect "named silence, traced handlers, handlers in text, Windows code in tools" pass "0 problems"

newTree
put tests/e2e/Probe.cpp '#include <windows.h>
void A(HANDLE process, IUnknown* object) {
  platform::win32::UniqueHandle held(process);
  list.CloseHandle(process);
  if (process) CloseHandle(process);
  object->Release();
}'
expect "a release by hand in a test" fail "tests/e2e/Probe.cpp:5: CloseHandle by hand"
expect "and a COM release" fail "tests/e2e/Probe.cpp:6: Release by hand"
put tests/e2e/Probe.cpp '#include <windows.h>
void A(HANDLE process) { platform::win32::UniqueHandle held(process); list.CloseHandle(process); }'
expect "a holder and an interface's CloseHandle in a test" pass "0 problems"

# Handles and interfaces are given back by their holders, in the product, the tools
# and the benchmarks alike; a method of the same name is not a release.
newTree
put src/platform/win32/Win32Clock.cpp '#include <windows.h>
void A(HKEY k) { if (k) ::RegCloseKey(k); }'
put tools/engine-sim/Sim.cpp '#include <windows.h>
void B(HANDLE h, IUnknown* p) {
  CloseHandle(h);
  p -> Release();
}'
put bench/startup/Probe.cpp '#include <windows.h>
void C(BSTR s) { SysFreeString(s); }'
expect "a release by hand in the product" fail "src/platform/win32/Win32Clock.cpp:2: RegCloseKey by hand"
expect "a release by hand in a tool" fail "tools/engine-sim/Sim.cpp:3: CloseHandle by hand"
expect "a COM release by hand in a tool" fail "tools/engine-sim/Sim.cpp:4: Release by hand"
expect "a release by hand in a benchmark" fail "bench/startup/Probe.cpp:2: SysFreeString by hand"

newTree
put tools/engine-sim/Sim.cpp '#include "platform/win32/Win32Handles.h"
const platform::win32::UniqueHandle h(CreateFileW(u, 0, 0, nullptr, 0, 0, nullptr));
bool Close(platform::Mutex& m, std::uintptr_t x) { return m.CloseHandle(x); }
bool Mine::CloseHandle(HANDLE x) { return true; }
// held, never CloseHandle(h) by hand
auto s = u"p->Release()";'
put bench/startup/Probe.cpp 'platform::win32::ComPtr<IUnknown> p; void D() { p.Reset(); }'
expect "holders, methods of the same name, and names in comments and text" pass "0 problems"

echo "check-sources cases: $passed passed, $failed failed"
[ $failed -eq 0 ]
