#!/usr/bin/env bash
# The LV2 bundle checked by the LV2 tools Linux hosts are built on.
#
#   lv2-e2e.sh MODE WORKDIR BUNDLE [VSTHOST VST2_PLUGIN]
#
# validate:     sord_validate finds no error in the bundle against the
#               installed LV2 schemas, the plug-in's library exports
#               lv2_descriptor and nothing else, the editor's lv2ui_descriptor.
# info:         lv2info shows the plug-in with its audio, control and atom
#               ports (symbols, ranges and defaults), the state interface and
#               the editor (an X11 UI in its own library).
# render RATE:  lv2apply renders the host tool's demo song through the plug-in
#               at RATE: finite, not the input, and sample for sample the
#               VST 2 build's render of the same file with the same settings
#               (lv2apply runs blocks of one frame; the clock is pinned to a
#               morning with faketime). The lunch break is the effect's own
#               and the VST 2 build's end-to-end run's.
set -euo pipefail

mode=$1 work=$2 bundle=$3
shift 3

uri=urn:velnor:zarquette
rm -rf "$work"
mkdir -p "$work/lv2"
cd "$work"
# Only this bundle on the search path: the test sees what a user installs.
ln -s "$bundle" lv2/zarquette.lv2
export LV2_PATH="$work/lv2"

fail() {
  echo "FAIL: $*"
  exit 1
}

# Every float of a WAV file's samples as raw bytes.
raw() {
  sox "$1" -t f32 "$2" 2>/dev/null
}

case $mode in
validate)
  schemas=()
  for vocabulary in atom buf-size core data-access dynmanifest event instance-access log midi morph options \
                    parameters patch port-groups port-props presets resize-port schemas state time ui units \
                    uri-map urid worker; do
    schemas+=(/usr/lib/lv2/"$vocabulary".lv2/*.ttl)
  done
  sord_validate "${schemas[@]}" "$bundle"/*.ttl >validate.log 2>&1 || { cat validate.log; fail "sord_validate"; }
  grep -q "Found 0 errors" validate.log || { cat validate.log; fail "sord_validate reports errors"; }
  grep -q "lv2:minorVersion 12 ;" "$bundle/zarquette.ttl" || fail "the description does not carry version 1.12"
  for lib in zarquette_dsp.so:lv2_descriptor zarquette_ui.so:lv2ui_descriptor; do
    exports=$(nm -D --defined-only "$bundle/${lib%%:*}" | awk '{ print $3 }')
    [ "$exports" = "${lib#*:}" ] || fail "${lib%%:*} exports more than ${lib#*:}: $exports"
  done
  ;;
info)
  lv2info "$uri" >info.log
  # One line per port: index, kind, direction, symbol and, for controls, range and default.
  awk '
    /^\tPort [0-9]+:/ { if (port != "") print port, kind, dir, sym, range; port = $2; sub(":", "", port); kind = ""; dir = ""; sym = ""; range = "" }
    /#toggled/ { kind = kind " toggle" }
    /#AudioPort/ { kind = "audio" } /#ControlPort/ { kind = "control" } /#AtomPort/ { kind = "atom" }
    /#InputPort/ { dir = "in" } /#OutputPort/ { dir = "out" }
    /Symbol:/ { sym = $2 }
    /Minimum:|Maximum:|Default:/ { range = range " " $2 }
    END { print port, kind, dir, sym, range }' info.log >ports.txt
  cat >expected.txt <<'PORTS'
0 audio in left_input 
1 audio in right_input 
2 audio out left_output 
3 audio out right_output 
4 control in tempo  60.000000 240.000000 120.000000
5 control in bof  0.000000 100.000000 0.000000
6 control in gauloises  0.000000 100.000000 0.000000
7 control toggle in nuclear_power  0.000000 1.000000 0.000000
8 control in oignons  0.000000 100.000000 0.000000
9 control in vin_rouge  0.000000 100.000000 0.000000
10 atom in control 
11 atom out notify 
PORTS
  diff expected.txt ports.txt || fail "lv2info shows other ports"
  grep -q "Name: *Zarquette" info.log || fail "no name"
  grep -q "Extension Data: *http://lv2plug.in/ns/ext/state#interface" info.log || fail "no state interface"
  grep -q '0.0 = "Oui"' info.log && grep -q '1.0 = "OUI"' info.log || fail "the switch's states have no labels"
  grep -A2 "^\s*$uri#ui\$" info.log | grep -q "Class: *http://lv2plug.in/ns/extensions/ui#X11UI" \
    && grep -q "Binary: *file://.*/zarquette_ui.so" info.log || fail "no X11 editor"
  ;;
render)
  rate=$1 vsthost=$2 vst2=$3
  morning=(faketime "2026-11-09 10:00:00")
  "$vsthost" demo -o demo.wav --rate "$rate" --length 8 >/dev/null
  "${morning[@]}" lv2apply -i demo.wav -o lv2.wav -c gauloises 80 -c oignons 60 -c bof 50 -c vin_rouge 30 \
    -c nuclear_power 1 "$uri"
  "${morning[@]}" "$vsthost" render "$vst2" demo.wav -o vst2.wav --block 1 --set Gauloises=80 --set Oignons=60 \
    --set Bof=50 --set "Vin Rouge=30" --set "Nuclear Power=OUI" >/dev/null
  raw demo.wav demo.raw
  raw lv2.wav lv2.raw
  raw vst2.wav vst2.raw
  [ "$(stat -c %s lv2.raw)" = "$(stat -c %s demo.raw)" ] || fail "the render is not as long as the input"
  # NaN and infinity are the floats whose exponent bits are all set.
  nonfinite=$(od -An -tx4 -v lv2.raw | grep -cE '\b[7f]f[89a-f][0-9a-f]{5}\b' || true)
  [ "$nonfinite" = 0 ] || fail "$nonfinite samples are not finite"
  ! cmp -s demo.raw lv2.raw || fail "the output is the input"
  cmp lv2.raw vst2.raw || fail "the LV2 and VST 2 renders differ"
  ;;
*)
  fail "unknown mode $mode"
  ;;
esac
echo "LV2 end-to-end $mode passed"
