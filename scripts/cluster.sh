#!/usr/bin/env bash
# Renders an album of 50 files as a job array of Slurm, on a cluster of this one machine, and
# compares the results with those of a plain run. The job script is that of docs/many-files.md.
# Usage: cluster.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh cluster
[ -n "${ZKR_DIST:-}" ] || scripts/build.sh
dist=$(realpath "${ZKR_DIST:-dist/linux}")

work=$PWD/build/cluster
rm -rf "$work"
mkdir -p "$work/album" "$work/spool" "$work/state"
cd "$work"
export PATH=$dist:/usr/sbin:$PATH SLURM_CONF=$work/slurm.conf

# --- The cluster: keys, sockets and state in the work folder, ports of its own ---

head -c 128 /dev/urandom >munge.key
chmod 400 munge.key
# The path of a socket has at most 107 bytes.
sockets=$(mktemp -d)
host=$(hostname -s)
cat >slurm.conf <<EOF
ClusterName=album
SlurmctldHost=$host(localhost)
SlurmUser=$(id -un)
SlurmdUser=$(id -un)
AuthType=auth/munge
AuthInfo=socket=$sockets/munge
CredType=cred/munge
SlurmctldPort=$((20000 + RANDOM % 10000))
SlurmdPort=$((30000 + RANDOM % 10000))
StateSaveLocation=$work/state
SlurmdSpoolDir=$work/spool
SlurmctldPidFile=$work/slurmctld.pid
SlurmdPidFile=$work/slurmd.pid
SlurmctldLogFile=$work/slurmctld.log
SlurmdLogFile=$work/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
JobAcctGatherType=jobacct_gather/none
SchedulerParameters=sched_interval=2,batch_sched_delay=1
ReturnToService=2
NodeName=$host NodeAddr=localhost CPUs=$(nproc) RealMemory=1000 State=UNKNOWN
PartitionName=all Nodes=$host Default=YES MaxTime=60 State=UP
EOF
stop() {
    for name in slurmd slurmctld munge; do
        [ -s $name.pid ] && kill "$(cat $name.pid)" 2>/dev/null
    done
    rm -rf "$sockets"
}
trap stop EXIT
munged --force --key-file="$work/munge.key" --socket="$sockets/munge" --pid-file="$work/munge.pid" \
    --log-file="$work/munge.log" --seed-file="$work/munge.seed"
slurmctld
slurmd
for _ in $(seq 60); do
    sinfo -h -o %T 2>/dev/null | grep -q idle && break
    sleep 1
done
sinfo -h -o 'node %n: %T, %c cores'

# --- The album ---

python3 - <<'EOF'
import random
import struct
import wave
for track in range(1, 51):
    source = random.Random(track)
    with wave.open(f"album/track {track:02}.wav", "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(44100)
        frames = [source.randrange(-9000, 9000) for _ in range(2 * 44100 * (2 + track % 3))]
        file.writeframes(struct.pack(f"<{len(frames)}h", *frames))
EOF
sed -n '/^```sbatch$/,/^```$/p' ../../docs/many-files.md | sed '1d;$d' >album.sbatch
printf '%s\n' album/*.wav >files.txt

echo "plain run"
zkrt46 render album/*.wav -o plain --set LFreq=82 --set LGain=+1.5

echo "job array, with a task cancelled while it waits and one while it may run"
job=$(sbatch --parsable album.sbatch)
scancel "${job}_50"
scancel "${job}_2"
while [ -n "$(squeue -h -j "$job" 2>/dev/null)" ]; do sleep 1; done
first=$(find masters -name 'track *.wav' | wc -l)
echo "  $first of 50 files are there"
[ "$first" -lt 50 ] || {
    echo "cluster: no task was cancelled" >&2
    exit 1
}
echo "the same array again"
sbatch --wait album.sbatch >/dev/null
[ -z "$(find masters -name '.*' -type f)" ] || {
    echo "cluster: temporary files are left" >&2
    exit 1
}
(cd plain && sha256sum -- *) >plain.sums
(cd masters && sha256sum -- *) >masters.sums
cmp plain.sums masters.sums
echo "  $(wc -l <masters.sums) files, equal to those of the plain run"
