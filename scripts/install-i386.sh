#!/usr/bin/env bash
# Lets this machine run 32-bit Windows programs, so that the product itself,
# Zarquette_vst2win.dll, can be loaded and tested: 32-bit wine (wine32:i386,
# the same version as wine64) on the kernel's own 32-bit support or, where the
# kernel has that switched off, on QEMU's user-mode i386 emulator registered
# with binfmt_misc.
#
#   install-i386.sh           sets up what is missing (as root, or through sudo)
#   install-i386.sh --check   only looks, changes nothing
#
# ZQ_I386_EMULATE=1 routes 32-bit programs through the emulator even where the
# kernel runs them itself, as it does on the machines whose kernel has its
# 32-bit support switched off (to reproduce their runs and timings).
#
# Safe to run again at any time: every step looks first and does nothing when
# its work is done. The binfmt_misc mount and registration do not survive a
# reboot on machines whose init does not restore them; the next run redoes them.
# The last line printed says what came of it, and the exit code agrees:
#   i386 route: ready (...)                          exit 0
#   i386 route: skipped (ZQ_SKIP_I386=1)             exit 0
#   i386 route: unavailable: WHY                     exit 1
set -uo pipefail

check_only=0
[ "${1:-}" = --check ] && check_only=1

readonly qemu=/usr/bin/qemu-i386
readonly wine32=/usr/lib/wine/wine
readonly binfmt=/proc/sys/fs/binfmt_misc
readonly entry=$binfmt/qemu-i386
# i386 ELF executables and shared objects (e_type 2 or 3, e_machine 3); the
# mask lets the OS/ABI bytes and the low bit of e_type vary.
readonly elf_magic='\x7f\x45\x4c\x46\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x02\x00\x03\x00'
readonly elf_mask='\xff\xff\xff\xff\xff\xfe\xfe\x00\xff\xff\xff\xff\xff\xff\xff\xff\xfe\xff\xff\xff'

log() { printf '== %s\n' "$*" >&2; }
unavailable() {
  echo "i386 route: unavailable: $*"
  exit 1
}

if [ "${ZQ_SKIP_I386:-0}" = 1 ]; then
  echo "i386 route: skipped (ZQ_SKIP_I386=1)"
  exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A static 32-bit program that only exits with 42: whether the machine runs
# i386 code at all, natively or through the emulator.
elf32_runs() {
  if [ ! -x "$work/exit42" ]; then
    printf '.globl _start\n_start: movl $1, %%eax\n movl $42, %%ebx\n int $0x80\n' >"$work/exit42.s"
    as --32 -o "$work/exit42.o" "$work/exit42.s" && ld -m elf_i386 -o "$work/exit42" "$work/exit42.o" || return 1
  fi
  timeout 60 "$work/exit42" 2>/dev/null
  [ $? -eq 42 ]
}

# QEMU before 8.1 scans the guest's address space page by page when it maps
# memory, and wine reserves nearly all of it: each wine process then spends
# about a minute of CPU starting. Later versions start it in a fraction of a second.
qemu_fast_enough() {
  local v
  v=$("$qemu" --version 2>/dev/null | sed -n 's/.*version \([0-9]*\)\.\([0-9]*\).*/\1 \2/p' | head -n 1)
  [ -n "$v" ] && read -r major minor <<<"$v" && { [ "$major" -gt 8 ] || { [ "$major" -eq 8 ] && [ "$minor" -ge 1 ]; }; }
}

wine64_version() { dpkg-query -W -f='${Version}' wine64 2>/dev/null; }
wine32_matches() {
  local want
  want=$(wine64_version)
  [ -n "$want" ] && dpkg-query -W -f='${Status} ${Version}' wine32:i386 2>/dev/null | grep -qx "install ok installed $want"
}

# Whether the registered entry hands i386 programs to our emulator with the
# interpreter opened at registration (F: works in any mount namespace and
# chroot) and argv[0] kept (P).
entry_is_ours() {
  [ -r "$entry" ] && grep -qx enabled "$entry" && grep -qx "interpreter $qemu" "$entry" &&
    grep -qE '^flags: .*F' "$entry" && grep -qE '^flags: .*P' "$entry"
}

status_line() {
  local how
  if [ -r "$entry" ] && grep -qx enabled "$entry"; then
    how="$("$qemu" --version | head -n 1 | sed 's/ version / /;s/ (.*//') via binfmt_misc"
  else
    how="native 32-bit kernel support"
  fi
  echo "i386 route: ready ($how, wine32 $(wine64_version))"
}

emulate=${ZQ_I386_EMULATE:-0}
emulator_needed() {
  { [ "$emulate" = 1 ] && ! entry_is_ours; } || ! elf32_runs
}

ready() {
  ! emulator_needed && wine32_matches && "$wine32" --version >/dev/null 2>&1
}

if ready; then
  status_line
  exit 0
fi
if [ "$check_only" = 1 ]; then
  elf32_runs || unavailable "32-bit programs do not run (scripts/install-i386.sh, as root, sets up the emulator)"
  emulator_needed && unavailable "the emulator is not registered (ZQ_I386_EMULATE=1 asks for it)"
  wine32_matches || unavailable "wine32:i386 at the version of wine64 ($(wine64_version)) is not installed"
  unavailable "$wine32 --version fails"
fi

if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || unavailable "setting up needs root, and sudo is not installed"
  rm -rf "$work"
  exec sudo --preserve-env=ZQ_SKIP_I386,ZQ_I386_EMULATE "$0" "$@"
fi

# apt and dpkg run one at a time on a machine: wait for any other to finish.
wait_for_apt() {
  local waited=0
  while pgrep -x 'apt(-get)?|dpkg' >/dev/null; do
    [ "$waited" -eq 0 ] && log "waiting for another apt or dpkg to finish"
    sleep 5
    waited=$((waited + 5))
    [ "$waited" -ge 1800 ] && unavailable "another apt or dpkg has run for 30 minutes"
  done
}
export DEBIAN_FRONTEND=noninteractive
apt_get() {
  wait_for_apt
  apt-get -o DPkg::Lock::Timeout=600 "$@"
}

codename=$(. /etc/os-release 2>/dev/null && echo "${VERSION_CODENAME:-}")

# The URI of the distribution's main archive, as this machine's apt has it.
main_mirror() {
  local uri=""
  if [ -r /etc/apt/sources.list.d/debian.sources ]; then
    uri=$(awk -v suite="$codename" '
      /^URIs:/ { uris = $2 }
      /^Suites:/ { for (i = 2; i <= NF; ++i) if ($i == suite) { print uris; exit } }
      ' /etc/apt/sources.list.d/debian.sources)
  fi
  if [ -z "$uri" ] && [ -r /etc/apt/sources.list ]; then
    uri=$(awk -v suite="$codename" '$1 == "deb" && $3 == suite { print $2; exit }' /etc/apt/sources.list)
  fi
  echo "${uri:-http://deb.debian.org/debian}"
}

# ---- apt ----------------------------------------------------------------------
# apt_opts point apt at a private copy of its lists when the fallback below
# needed one; the machine's own lists are never changed by hand.
apt_opts=()
updated=0
apt_update() {
  [ "$updated" = 1 ] && return 0
  log "apt-get update"
  apt_get update -qq 2>&1 | tee "$work/update.log" >&2
  updated=1
}

# A mirror caught mid-sync can serve an i386 index that no longer matches its
# signed release file; apt then drops that index, and a 32-bit twin of a 64-bit
# library installed from that archive cannot be found. The fallback takes such
# an index as the mirror serves it into a private copy of apt's lists. It is
# not covered by the signature, so it is used only after the signed indexes
# failed; a 32-bit library taken from it must still match a version of the
# signed 64-bit index, and every package is checked against its hash there.
use_unsigned_i386_indexes() {
  local url file lists=$work/lists
  grep -oE 'https?://[^ ]*/binary-i386/Packages\.(xz|gz)' "$work/update.log" | sort -u >"$work/dropped"
  [ -s "$work/dropped" ] || return 1
  mkdir -p "$lists/partial"
  cp -a /var/lib/apt/lists/*_* "$lists/"
  while read -r url; do
    log "fallback: the i386 index $url as the mirror serves it"
    /usr/lib/apt/apt-helper download-file "$url" "$work/index" >/dev/null 2>&1 || return 1
    file=$(sed -E 's#^https?://##; s#\.(xz|gz)$##; s#/#_#g' <<<"$url")
    case $url in
    *.xz) xz -dc "$work/index" >"$lists/$file" ;;
    *.gz) gzip -dc "$work/index" >"$lists/$file" ;;
    esac || return 1
  done <"$work/dropped"
  apt_opts=(-o Dir::State::Lists="$lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
}

# The highest version of a package that the archive has for both amd64 and
# i386, and not older than the amd64 one installed; empty when there is none.
common_version() {
  local name=$1 installed best="" v
  installed=$(dpkg-query -W -f='${Version}' "$name:amd64" 2>/dev/null)
  for v in $(apt-cache "${apt_opts[@]}" madison "$name" "$name:i386" 2>/dev/null | awk -F' [|] ' '
      $3 ~ / amd64 Packages$/ { a[$2] = 1 } $3 ~ / i386 Packages$/ { i[$2] = 1 }
      END { for (v in a) if (v in i) print v }'); do
    [ -n "$installed" ] && dpkg --compare-versions "$v" lt "$installed" && continue
    { [ -z "$best" ] || dpkg --compare-versions "$v" gt "$best"; } && best=$v
  done
  echo "$best"
}

# A 32-bit library must be at exactly the version of its installed 64-bit
# twin. When the archive has moved on since the 64-bit one was installed, or
# one architecture's index of an archive could not be fetched, apt's resolver
# gives up rather than upgrade the twin: name each such library at a version
# both architectures have, which upgrades the 64-bit one in step. Sets
# `wanted` to the packages to install and leaves apt's plan, or why there is
# none, in $work/plan.
plan_wine32() {
  local name v more
  wanted=("wine32:i386=$1")
  for _ in $(seq 1 40); do
    apt-get "${apt_opts[@]}" install -s --no-install-recommends "${wanted[@]}" >"$work/plan" 2>&1 && return 0
    more=$(sed -n 's/.*Depends: \([^ :]*\):i386 .*but it is not going to be installed.*/\1/p' "$work/plan" | sort -u)
    [ -n "$more" ] || return 1
    for name in $more; do
      [[ " ${wanted[*]} " != *" $name:i386="* ]] || return 1
      v=$(common_version "$name")
      if [ -z "$v" ]; then
        echo "no version of $name is in the archive for both amd64 and i386" >"$work/plan"
        return 1
      fi
      log "in step: $name $v for amd64 and i386"
      wanted+=("$name:i386=$v")
      dpkg-query -W -f='${Status}' "$name:amd64" 2>/dev/null | grep -q 'ok installed' && wanted+=("$name:amd64=$v")
    done
  done
  return 1
}

# ---- 32-bit programs through the emulator --------------------------------------

if emulator_needed; then
  if [ ! -e "$binfmt/register" ]; then
    log "mounting binfmt_misc"
    mount -t binfmt_misc binfmt_misc "$binfmt" 2>"$work/mount.err" ||
      unavailable "binfmt_misc cannot be mounted: $(head -n 1 "$work/mount.err")"
  fi
  if ! qemu_fast_enough; then
    pkgs=(qemu-user)
    if [ "$codename" = bookworm ]; then
      # bookworm's own 7.2 is the slow kind: take the backported one.
      src=/etc/apt/sources.list.d/bookworm-backports.sources
      if [ ! -e "$src" ]; then
        printf 'Types: deb\nURIs: %s\nSuites: bookworm-backports\nComponents: main\nArchitectures: amd64\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n' \
          "$(main_mirror)" >"$src"
        updated=0
      fi
      pkgs=(qemu-user/bookworm-backports)
      # The backported emulator replaces the older static one: upgrade that
      # too rather than let apt remove it.
      if dpkg-query -W -f='${Status}' qemu-user-static 2>/dev/null | grep -q 'ok installed'; then
        pkgs+=(qemu-user-static/bookworm-backports qemu-user-binfmt/bookworm-backports)
      fi
    fi
    apt_update
    log "installing ${pkgs[*]}"
    apt_get install -y -qq --no-install-recommends "${pkgs[@]}" >&2 || unavailable "apt could not install ${pkgs[*]}"
    qemu_fast_enough || unavailable "$qemu is older than 8.1 (too slow for wine): $("$qemu" --version | head -n 1)"
  fi
  if [ -e "$entry" ] && ! entry_is_ours; then
    log "replacing the binfmt_misc entry qemu-i386"
    echo -1 >"$entry"
  fi
  if [ ! -e "$entry" ]; then
    log "registering $qemu for i386 programs with binfmt_misc"
    printf '%s' ":qemu-i386:M::$elf_magic:$elf_mask:$qemu:PF" >"$binfmt/register" ||
      unavailable "binfmt_misc refused the registration of $qemu"
  fi
  elf32_runs || unavailable "a 32-bit program does not run through $qemu"
fi

# ---- 32-bit wine at the version of the installed wine64 ------------------------
if ! wine32_matches; then
  want=$(wine64_version)
  [ -n "$want" ] || unavailable "wine64 is not installed (scripts/install-deps.sh installs it)"
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    log "adding the i386 architecture"
    dpkg --add-architecture i386
    updated=0
  fi
  apt_update
  if ! plan_wine32 "$want"; then
    use_unsigned_i386_indexes && plan_wine32 "$want" ||
      unavailable "apt cannot install wine32:i386=$want: $(grep -m1 -E '^E:|Depends:|^no version' "$work/plan" | sed 's/^ *//')"
  fi
  if grep -q '^Remv' "$work/plan"; then
    unavailable "installing wine32:i386 would remove $(grep '^Remv' "$work/plan" | awk '{print $2}' | tr '\n' ' ')"
  fi
  log "installing ${wanted[*]}"
  apt_get "${apt_opts[@]}" install -y -qq --no-install-recommends "${wanted[@]}" >&2 ||
    unavailable "apt could not install wine32:i386=$want"
fi

"$wine32" --version >/dev/null 2>&1 || unavailable "$wine32 --version fails"
status_line
