# What the scripts of this folder share; sourced by them, never run.
# shellcheck shell=bash

set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
logs=$root/build/logs

# say TEXT...: one line for the person at the terminal; standard output is left to data.
say() { printf '%s\n' "$*" >&2; }

# stop TEXT...: says what is wrong with the system and ends the script.
stop() {
  say "$@"
  exit 2
}

# quietly NAME WHAT COMMAND...: runs COMMAND with its output in build/logs/NAME.log, which is shown
# when it fails. Once two seconds have gone by, its lines are shown as progress.
quietly() {
  local log=$logs/$1.log what=$2
  shift 2
  mkdir -p "$logs"
  "$@" </dev/null 2>&1 | progress "$what" "$log" && return
  say "$what: failed. The end of $log:"
  tail -n 100 "$log" >&2
  return 1
}

# progress WHAT LOG: from standard input into LOG; a line on standard error now and then. Driven by
# the lines alone, so that no process of it outlives the command.
progress() {
  local line next=$((SECONDS + 2)) shown=
  : >"$2"
  while IFS= read -r line || [[ $line ]]; do
    printf '%s\n' "$line" >>"$2"
    ((SECONDS >= next)) || continue
    next=$((SECONDS + 10)) shown=1
    if [[ -t 2 ]]; then
      next=$SECONDS
      printf '\r\033[K%.79s' "$1: $line" >&2
    else
      say "$1: $line"
    fi
  done
  [[ ! $shown || ! -t 2 ]] || printf '\r\033[K' >&2
}

# configured PRESET: its build folder was configured here, not in a copied or moved checkout, and
# after the last change to what the set-up depends on.
configured() {
  local folder=$root/build/$1 file
  [[ -e $folder/build.ninja && -e $folder/configured ]] || return 1
  for file in CMakePresets.json scripts/setup; do
    [[ $folder/configured -nt $root/$file ]] || return 1
  done
  [[ $(<"$folder/configured") == "$root" ]]
}

# configure PRESET: installs what its build needs and makes the build folder, unless that is done.
configure() {
  configured "$1" && return
  "$root/scripts/setup" "$(package_set "$1")" >&2 || return
  if [[ ! -v CMAKE_CXX_COMPILER_LAUNCHER ]] && command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
  fi
  quietly "$1-configure" "preparing the $1 build" cmake -S "$root" --preset "$1" --fresh ||
    return
  printf '%s\n' "$root" >"$root/build/$1/configured"
}

# package_set PRESET: the packages that scripts/setup installs for it.
package_set() {
  case $1 in
    clang) echo check ;;
    bench | coverage) echo "$1" ;;
    *) echo build ;;
  esac
}

# build PRESET [TARGET...]: brings the targets up to date, one build at a time in each folder.
build() {
  local preset=$1 folder=$root/build/$1 lock
  shift
  configure "$preset" || return
  exec {lock}>"$folder/lock"
  ! command -v flock >/dev/null || flock "$lock"
  quietly "$preset-build" "building ($preset)" ninja -C "$folder" "$@" || return
  exec {lock}>&-
}

# remember_passes: from now on, test programs that have not changed since they passed are skipped, except
# where a change is judged.
remember_passes() { [[ ${CI-} == true ]] || export REMEMBER_PASSES=1; }

# in_memory COMMAND...: runs COMMAND with temporary files in memory, where there is a gigabyte for them, and
# programs among them may run. Tests make trees of thousands of small files, which takes long on a disk.
in_memory() {
  local bytes options
  read -r bytes options < <(findmnt -nbo AVAIL,OPTIONS /dev/shm) || true
  if [[ ! -v TMPDIR && -w /dev/shm && ${options-noexec} != *noexec* ]] && ((bytes >= 1 << 30)); then
    TMPDIR=/dev/shm "$@"
  else
    "$@"
  fi
}
