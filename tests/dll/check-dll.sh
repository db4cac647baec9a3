#!/usr/bin/env bash
# Checks a built plug-in DLL without running it: the file format and machine,
# exactly one export named "main", imports from system DLLs only, and the
# embedded recordings (WAVE resources in French, language 1036) and the
# editor's artwork (APIC resources, under their names).
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

# wrestool prints every named resource under its type's name, so the APIC
# names come from objdump's resource directory: type entries are indented by
# three spaces, name entries below them by five.
apic_names=$(awk '
  /^[0-9a-f]+   Entry: name: / { in_apic = ($(NF-2) == "APIC,") }
  /^[0-9a-f]+     Entry: name: / && in_apic { sub(/,$/, "", $(NF-2)); print $(NF-2) }
' <<<"$private" | sort | tr '\n' ' ')
want_apic='ARW_06 BKG FF_01_00 FF_01_01 FONT_03 KN_01_SPN KN_02_SPN KN_03_SPN KN_04_SPN '
[ "$apic_names" = "$want_apic" ] || fail "APIC resources are '$apic_names', expected '$want_apic'"
apics=$(wc -w <<<"$apic_names")

if [ "$failures" -eq 0 ]; then
  echo "OK: $dll ($format, exports main, system imports only, $waves recordings, $apics pictures)"
fi
exit $((failures > 0))
