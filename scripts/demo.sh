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

if [ "$display" = yes ]; then
  out/bin/lamp-editor --config "$folder/configuration" --demo-address "$address"
else
  export QT_QPA_PLATFORM=offscreen
  out/bin/lamp-editor --config "$folder/configuration" --tour out/tour --tour-address "$address"
  echo "Screenshots: out/tour"
fi
