# shellcheck shell=bash
# For the scripts beside it, which source it: strict mode, the repository's root as the working
# folder, and --help, which prints the comment at the script's head.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

case ${1-} in
  -h | --help)
    sed -n '2,/^$/s/^# \{0,1\}//p' "scripts/$(basename "$0")"
    exit 0
    ;;
esac

refuse() {
  echo "$(basename "$0"): $1 (see --help)" >&2
  exit 2
}

# The tree's own files with one of these endings, one a line: sources h cpp inl
sources() {
  local names=() ending
  for ending in "$@"; do names+=(-o -name "*.$ending"); done
  find . \( -path ./build -o -path ./.git \) -prune -o -type f \( "${names[@]:1}" \) -print |
    sed 's|^\./||' | LC_ALL=C sort
}

# Fails with a word of advice unless every file is there: need build/release/libvelora.so …
need() {
  local file
  for file in "$@"; do
    [[ -e $file ]] || { echo "$(basename "$0"): no $file; run scripts/build first" >&2; exit 1; }
  done
}

# What clang does not know of GCC's options, as a sed expression that takes it out of a command.
without_gcc_options='s/ -(fno-declone-ctor-dtor|mstringop-strategy=libcall)//g'
