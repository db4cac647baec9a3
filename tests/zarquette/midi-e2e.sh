#!/usr/bin/env bash
# MIDI through the real plug-in, as a host plays it with the project's host tool.
#
#   midi-e2e.sh configured|validate WORKDIR VSTHOST PLUGIN [EMULATOR...]
#
# configured: a configuration file, named in the registry for autoload, binds
#             "Oignons" to controller 74 and selects the host's MIDI output; a
#             controller 74 sweep must drive "Oignons", and the program
#             selection at start-up must come back as MIDI: NRPN for every
#             parameter but "Oignons", controller 74 for it.
# validate:   the same configuration; the host tool's validation passes and
#             checks the MIDI the plug-in sends.
#
# With an emulator (wine), the registry is that of a wine prefix of its own;
# natively it is a folder below XDG_CONFIG_HOME.
set -euo pipefail

mode=$1 work=$2 host=$3 plugin=$4
shift 4
emulator=("$@")

rm -rf "$work"
mkdir -p "$work"
cd "$work"

fail() {
  echo "FAIL: $*"
  exit 1
}

# ---- A format-0 MIDI file from hexadecimal track bytes (96 ticks a quarter) ----
write_mid() {
  local file=$1 track=$2
  track+=" 00 ff 2f 00"
  local n
  n=$(wc -w <<<"$track")
  local header="4d 54 68 64 00 00 00 06 00 00 00 01 00 60 4d 54 72 6b"
  header+=$(printf ' %02x %02x %02x %02x' $((n >> 24 & 255)) $((n >> 16 & 255)) $((n >> 8 & 255)) $((n & 255)))
  local escaped=""
  for b in $header $track; do
    escaped+="\\x$b"
  done
  printf "$escaped" >"$file"
}

# ---- The registry and the configuration file ----
set_autoload() {
  local config=$1
  if ((${#emulator[@]} > 0)); then
    export ZQ_WINEPREFIX="$work/.wineprefix"
    local key='HKCU\Software\Velnor\Zarquette\Autoload'
    local dos_path="Z:${config//\//\\}"
    "${emulator[@]}" reg add "$key" /v LatestConfigAutoload /t REG_SZ /d 1 /f >/dev/null
    "${emulator[@]}" reg add "$key" /v LatestConfigFile /t REG_SZ /d "$dos_path" /f >/dev/null
  else
    export XDG_CONFIG_HOME="$work/config-home"
    local dir="$XDG_CONFIG_HOME/Velnor/Zarquette/Autoload"
    mkdir -p "$dir"
    printf '1' >"$dir/LatestConfigAutoload.value"
    printf '%s' "$config" >"$dir/LatestConfigFile.value"
  fi
}

# The column of one parameter in the automation file: its first and last value.
column_ends() {
  local csv=$1 name=$2
  awk -F, -v name="$name" '
    NR == 1 { for (i = 1; i <= NF; ++i) if ($i == name) col = i; next }
    col { if (first == "") first = $col; last = $col }
    END { if (!col) exit 1; print first, last }' "$csv"
}

# Hexadecimal bytes of a file on one line.
hex_of() {
  od -An -tx1 -v "$1" | tr -s ' \n' ' '
}

render() {
  "${emulator[@]}" "$host" render "$plugin" -o out.wav --length 2 --block 256 \
    --midi-in in.mid --midi-out sent.mid --automation-out auto.csv
}

case "$mode" in
configured | validate)
  cat >zq-midi.txt <<'EOF'
Zarquette_config_section =
{
   midi =
   {
      control_map =
      {
         id_4 = cc_74
      }
      port_out =
      {
         name = "vst midi out interface"
      }
   }
}
EOF
  set_autoload "$work/zq-midi.txt"
  if [[ $mode == validate ]]; then
    # With an output selected, what the plug-in sends is checked too.
    "${emulator[@]}" "$host" validate "$plugin" --level 3 | tee validate.txt
    grep -q "^PASS  MIDI sent to the host is well formed" validate.txt || fail "the plug-in's MIDI was not checked"
    grep -q "^[1-9][0-9]* passed, 0 failed" validate.txt || fail "validation failed"
    echo "MIDI end-to-end $mode passed"
    exit 0
  fi
  track=""
  for ((v = 0; v <= 127; ++v)); do
    track+=$(printf ' 02 b0 4a %02x' "$v")
  done
  write_mid in.mid "${track# }"
  render
  read -r first last < <(column_ends auto.csv Oignons) || fail "no Oignons column"
  echo "Oignons: $first -> $last"
  [[ $first == 0 ]] || fail "Oignons starts at $first"
  [[ $last == 0.992248058 ]] || fail "Oignons ends at $last, not 16256/16383"
  sent=$(hex_of sent.mid)
  # Tempo 120 of 60..240 is 1/3: 5461 = 0x2A * 128 + 0x55.
  for expected in "b0 63 00 00 b0 62 00 00 b0 06 2a 00 b0 26 55" \
    "b0 63 00 00 b0 62 01 00 b0 06 00 00 b0 26 00" "b0 63 00 00 b0 62 02 00 b0 06 00 00 b0 26 00" \
    "b0 63 00 00 b0 62 03 00 b0 06 00 00 b0 26 00" "b0 4a 00" \
    "b0 63 00 00 b0 62 05 00 b0 06 00 00 b0 26 00"; do
    [[ $sent == *" $expected "* ]] || fail "the echo lacks $expected: $sent"
  done
  [[ $sent != *"b0 62 04"* ]] || fail "Oignons was echoed as NRPN 4"
  # The controller sweep itself is not echoed: only the start-up program is.
  [[ $sent != *"b0 4a 7f"* ]] || fail "incoming MIDI was echoed"
  echo "echo: $sent"
  ;;
*)
  fail "unknown mode $mode"
  ;;
esac
echo "MIDI end-to-end $mode passed"
