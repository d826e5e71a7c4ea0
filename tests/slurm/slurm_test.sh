#!/bin/sh
# SPDX-License-Identifier: MIT
# Tests "morlc build --ninja --launcher 'srun -n1 -N1'" on a real Slurm with one controller and one
# node, both started here. The result must equal a local build. If the node goes down halfway, the
# build must fail with a clear message, and nothing may be lost.
#   slurm_test.sh DIRECTORY_OF_MORLC EXAMPLES
set -eu
tools=$1
examples=$2
work=$(mktemp -d)
PATH=/usr/sbin:$PATH
export SLURM_CONF="$work/slurm.conf"
user=$(id -un)
host=$(hostname -s)
port=$((20000 + $$ % 10000 * 2))

is_gone() { ! kill -0 "$1"; }

stop() {
    for daemon in slurmd slurmctld; do
        [ -f "$work/$daemon.pid" ] || continue
        pid=$(cat "$work/$daemon.pid")
        kill "$pid" || true
        wait_for 10 is_gone "$pid" || kill -9 "$pid"
    done
    rm -rf "$work"
}
trap stop EXIT
trap 'exit 1' HUP INT TERM

fail() {
    echo "slurm: $1" >&2
    tail -n 20 "$work"/*.log >&2
    exit 1
}

# wait_for SECONDS COMMAND...
wait_for() {
    tenths=$(($1 * 10))
    shift
    until "$@" >/dev/null 2>&1; do
        tenths=$((tenths - 1))
        [ "$tenths" -gt 0 ] || return 1
        sleep 0.1
    done
}

is_idle() { [ "$(sinfo -h -o %T)" = idle ]; }

has_only_running_jobs() {
    [ -n "$(squeue -h -t RUNNING)" ] && [ "$(squeue -h)" = "$(squeue -h -t RUNNING)" ]
}

has_lines() { [ "$(wc -l <"$1")" -ge "$2" ]; }

cat >"$SLURM_CONF" <<TEXT
ClusterName=test
SlurmctldHost=$host(127.0.0.1)
SlurmctldPort=$port
SlurmdPort=$((port + 1))
SlurmUser=$user
SlurmdUser=$user
AuthType=auth/none
CredType=cred/none
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
MpiDefault=none
ReturnToService=0
KillWait=1
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
SlurmctldLogFile=$work/slurmctld.log
SlurmdLogFile=$work/slurmd.log
NodeName=$host NodeAddr=127.0.0.1 CPUs=2 State=UNKNOWN
PartitionName=all Nodes=$host Default=YES State=UP
TEXT
mkdir "$work/state" "$work/spool"
slurmctld
slurmd
wait_for 30 is_idle || fail "the node does not come up"

"$tools/morlc" build -C "$examples" shaders.json -o "$work/local" -q

# write_ninja LAUNCHER: into $work/out
write_ninja() {
    "$tools/morlc" build -C "$examples" shaders.json -o "$work/out" \
        --ninja "$work/out/build.ninja" --launcher "$1"
}

# Checks that every file in $work/out is the same as in the local build.
check_whole() {
    (cd "$work/local" && find . -type f) | while read -r file; do
        [ ! -f "$work/out/$file" ] || cmp "$work/out/$file" "$work/local/$file" || exit 1
    done || fail "a file is not the same as in the local build"
}

write_ninja "srun -n1 -N1"
ninja -j2 -f "$work/out/build.ninja" >"$work/ninja.log" || fail "the build fails"
diff -r -x '.ninja*' -x build.ninja -x '*.manifest.json' "$work/out" "$work/local" ||
    fail "the build differs from a local one"
grep -q '17/17' "$work/ninja.log" || fail "not all shaders were built"

# A slower build, so that it can be interrupted halfway.
rm -rf "$work/out"
write_ninja "srun -n1 -N1 sh -c 'sleep 2; exec \"\$@\"' sh"
ninja -j2 -f "$work/out/build.ninja" >"$work/down.log" 2>&1 &
build=$!
wait_for 30 has_lines "$work/down.log" 4 || fail "the slow build does not begin"
# A job that is still queued would wait for the node to come back, as it should.
wait_for 30 has_only_running_jobs || fail "the slow build queues jobs"
scontrol update nodename="$host" state=down reason=test
status=0
wait_for 60 sh -c "! kill -0 $build" || {
    kill "$build"
    fail "the build waits for a node that is down"
}
wait "$build" || status=$?
[ "$status" != 0 ] || fail "the build succeeds without its node"
grep -i 'srun: error' "$work/down.log" || fail "nothing says why the build failed"
grep -q '^FAILED: ' "$work/down.log" || fail "no shader is named"
check_whole

scontrol update nodename="$host" state=resume
wait_for 30 is_idle || fail "the node does not come back"
ninja -j2 -f "$work/out/build.ninja" >"$work/ninja.log" || fail "the build does not go on"
diff -r -x '.ninja*' -x build.ninja -x '*.manifest.json' "$work/out" "$work/local" ||
    fail "the resumed build differs from a local one"
echo "slurm: built on a node, failed without it, and went on"
