#!/usr/bin/env bash
# cpu-runs.sh LEVEL: succeeds when this processor runs code built with
# -march=LEVEL (x86-64-v2, x86-64-v3, x86-64-v4), as the dynamic loader
# reports it; fails when it does not or the loader does not say.
set -euo pipefail
level=$1
for loader in /lib64/ld-linux-x86-64.so.2 /lib/x86_64-linux-gnu/ld-linux-x86-64.so.2; do
  if [ -x "$loader" ] && "$loader" --help 2>/dev/null | grep -q "^ *$level (supported"; then
    exit 0
  fi
done
exit 1
