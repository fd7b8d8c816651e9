#!/bin/sh
# The default solver behind "Submit Batch Run":
#   run-FitW.sh RESPONSEFILE [RUNDIR] exit|wait
# The working directory is the run folder; the results go into its "output" folder.
# The run window closes ("exit") or stays open ("wait") by itself when this script ends,
# so the last argument needs no action here. An empty RUNDIR leaves only two arguments.
if [ "$#" -lt 1 ]; then
  echo "usage: run-FitW.sh RESPONSEFILE [RUNDIR] exit|wait" >&2
  exit 2
fi
response=$1
case "$#:${2-}" in
  1:* | 2:exit | 2:wait) set -- "$response" ;;
  *) set -- "$response" "$2" ;;
esac
"$(dirname "$0")/quillet-cli" fit -- "$@"
exit $?
