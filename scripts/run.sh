#!/usr/bin/env bash
# Starts tarvel-store on 127.0.0.1:8080 with its database under the build tree, then the tarvel app
# pointed at it. Closing the app stops the store.
set -euo pipefail
build_dir=${1:-build/dev}
port=${TARVEL_STORE_PORT:-8080}
data_dir="$build_dir/store-data"

if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" && -z "${QT_QPA_PLATFORM:-}" ]]; then
  cat >&2 <<MSG
run: no display found. Run the app one of these ways:
  xvfb-run -a -s '-screen 0 1280x1024x24' make run      # a virtual X display
  QT_QPA_PLATFORM=offscreen make run                     # no window at all
  QT_QPA_PLATFORM=offscreen TARVEL_SNAPSHOT=shot.png make run   # write one screenshot and quit
MSG
  exit 2
fi

mkdir -p "$data_dir"
"$build_dir/store/tarvel-store" --sandbox --port "$port" --db "$data_dir/tarvel-store.sqlite" &
store_pid=$!
trap 'kill "$store_pid" 2>/dev/null || true; wait "$store_pid" 2>/dev/null || true' EXIT

# A fresh database is seeded and its pictures scaled for the app's screens first: a few seconds.
for _ in $(seq 1 600); do
  if curl -fsS "http://127.0.0.1:$port/store.json" >/dev/null 2>&1; then break; fi
  if ! kill -0 "$store_pid" 2>/dev/null; then
    echo "run: tarvel-store did not start (is port $port taken?)" >&2
    exit 1
  fi
  sleep 0.1
done

export TARVEL_API_BASE_URL="http://127.0.0.1:$port"
export TARVEL_HOME="${TARVEL_HOME:-$PWD/$build_dir/app-home}"
"$build_dir/client/tarvel"
