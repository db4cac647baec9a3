#!/bin/sh
# with-settings-file.sh STORE TEXT COMMAND...: runs COMMAND with a per-user
# key store of its own in the folder STORE, in which the plug-in's autoload is
# on and names a settings file holding TEXT.
set -eu
store=$1
text=$2
shift 2
rm -rf "$store"
keys="$store/Velnor/Zarquette/Autoload"
mkdir -p "$keys"
printf '%s\n' "$text" > "$store/settings.cfg"
printf '1' > "$keys/LatestConfigAutoload.value"
printf '%s' "$store/settings.cfg" > "$keys/LatestConfigFile.value"
XDG_CONFIG_HOME=$store
export XDG_CONFIG_HOME
exec "$@"
