// Runs `work` once to warm up and once for the record, and prints one line of JSON.
export async function measure(workload, peer, items, work) {
    await work();
    const start = process.hrtime.bigint();
    await work();
    const seconds = Number(process.hrtime.bigint() - start) / 1e9;
    console.log(JSON.stringify({ workload, peer, items, seconds }));
}
