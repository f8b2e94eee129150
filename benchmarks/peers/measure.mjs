// Runs `work` once to warm up and five times for the record, and prints one line of JSON.
export async function measure(workload, peer, bytes, items, work) {
    await work();
    const seconds = [];
    for (let i = 0; i < 5; ++i) {
        const start = process.hrtime.bigint();
        await work();
        seconds.push(Number(process.hrtime.bigint() - start) / 1e9);
    }
    console.log(JSON.stringify({ workload, peer, bytes, items, seconds }));
}
