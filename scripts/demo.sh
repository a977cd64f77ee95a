#!/usr/bin/env bash
# Starts a controller with a demo street on a free port and the editor on the demo configuration in
# the user's own folders; the controller ends with the editor.
set -euo pipefail
cd "$(dirname "$0")/.."

display=yes
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || display=no

if [ "$display" = yes ]; then
  folder="${XDG_DATA_HOME:-$HOME/.local/share}/lamp-manager/demo"
else
  folder="$PWD/out/tour-data"
  rm -rf "$folder" out/tour
fi
mkdir -p "$folder/controller" "$folder/configuration"

log="$folder/controller/log.txt"
out/bin/lamp-controller --port 0 --nodes 200 --seed 7 --with-inputs --state "$folder/controller" \
  >"$log" 2>&1 &
controller=$!
trap 'kill "$controller" 2>/dev/null || true; wait "$controller" 2>/dev/null || true' EXIT

address=
for _ in $(seq 100); do
  address=$(sed -n 's|^listening on http://||p' "$log")
  [ -n "$address" ] && break
  kill -0 "$controller" 2>/dev/null || break
  sleep 0.05
done
if [ -z "$address" ]; then
  echo "The controller did not start:" >&2
  cat "$log" >&2
  exit 1
fi
echo "The controller answers at http://$address"

# The words that put the lamps of a street into a group of its name.
group_of() {
  printf '%s\n' \
    '{"do":"editor.newGroup","device":"Demo street"}' \
    "{\"do\":\"type\",\"id\":\"name\",\"text\":\"$1\"}" \
    "{\"do\":\"type\",\"id\":\"reference\",\"text\":\"$1\"}" \
    '{"do":"click","id":"addMatching"}' \
    '{"do":"click","id":"ok"}'
}

# The demo device is declared as an engineer would, by the scripted user. In a configuration that has
# it already only the port follows, without asking the controller to move.
declare_device() {
  local port=${address##*:}
  if grep -q '<name>Demo street</name>' "$folder/configuration/configuration.xml" 2>/dev/null; then
    printf '%s\n' \
      '{"do":"editor.modifyDevice","device":"Demo street"}' \
      "{\"do\":\"type\",\"id\":\"socket\",\"text\":\"$port\"}" \
      '{"do":"click","id":"ok"}' |
      out/bin/lamp-script --config "$folder/configuration" --state "$folder/state" \
        --verify-connection none
  else
    printf '%s\n' \
      '{"do":"editor.newDevice"}' \
      '{"do":"type","id":"name","text":"Demo street"}' \
      '{"do":"type","id":"description","text":"A generated street to try things on"}' \
      '{"do":"type","id":"address","text":"127.0.0.1"}' \
      "{\"do\":\"type\",\"id\":\"socket\",\"text\":\"$port\"}" \
      '{"do":"type","id":"ftpAddress","text":"127.0.0.1"}' \
      '{"do":"click","id":"ok"}' \
      "$(group_of 'Market Square')" "$(group_of 'Station Road')" "$(group_of 'Bridge Street')" |
      out/bin/lamp-script --config "$folder/configuration" --state "$folder/state"
  fi
}
declare_device >"$folder/declare.log"
if grep -q '"ok":false' "$folder/declare.log"; then
  echo "The demo device could not be declared:" >&2
  cat "$folder/declare.log" >&2
  exit 1
fi

if [ "$display" = yes ]; then
  out/bin/lamp-editor --config "$folder/configuration" --state "$folder/state"
else
  export QT_QPA_PLATFORM=offscreen
  out/bin/lamp-editor --config "$folder/configuration" --state "$folder/state" --tour out/tour --tour-address "$address"
  echo "Screenshots: out/tour"
fi
