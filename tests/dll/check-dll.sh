#!/usr/bin/env bash
# Checks a built plug-in DLL without running it: the file format and machine,
# exactly one export named "main", imports from system DLLs only, and the
# embedded recordings (WAVE resources in French, language 1036).
# Usage: check-dll.sh DLL pe32|pe32+ EXPECTED_WAVE_COUNT
set -uo pipefail
dll=$1
format=$2
expected_waves=$3
failures=0

fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}

if [ ! -f "$dll" ]; then
  echo "FAIL: $dll not found (build that configuration first)"
  exit 1
fi

if [ "$format" = pe32 ]; then
  objdump=i686-w64-mingw32-objdump
  want_format='file format pei-i386'
  want_machine='architecture: i386'
else
  objdump=x86_64-w64-mingw32-objdump
  want_format='file format pei-x86-64'
  want_machine='architecture: i386:x86-64'
fi

headers=$("$objdump" -f "$dll")
grep -q "$want_format" <<<"$headers" || fail "not $want_format"
grep -q "$want_machine" <<<"$headers" || fail "not $want_machine"

private=$("$objdump" -p "$dll")
# The export table lists "[Ordinal/Name Pointer] Table" rows: exactly one, main.
exports=$(sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' <<<"$private" | grep -E '^\s+\[' | awk '{print $NF}')
[ "$exports" = "main" ] || fail "exports are '$(tr '\n' ' ' <<<"$exports")', expected only main"

allowed='^(KERNEL32|USER32|GDI32|ADVAPI32|WINMM|msvcrt|SHELL32|OLE32|COMCTL32|COMDLG32|IMM32|UXTHEME|VERSION)\.dll$'
while read -r name; do
  [ -z "$name" ] && continue
  grep -qiE "$allowed" <<<"$name" || fail "imports non-system DLL $name"
done < <(grep 'DLL Name:' <<<"$private" | awk '{print $3}')

waves=$(wrestool -l --type=WAVE "$dll" 2>/dev/null | grep -c -- '--language=1036')
[ "$waves" -eq "$expected_waves" ] || fail "$waves WAVE resources in language 1036, expected $expected_waves"

if [ "$failures" -eq 0 ]; then
  echo "OK: $dll ($format, exports main, system imports only, $waves recordings)"
fi
exit $((failures > 0))
