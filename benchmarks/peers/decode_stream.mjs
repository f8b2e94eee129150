// The npm readers of chat-completions streams, on the event stream in the given file.
import { readFileSync } from "node:fs";
import { createParser } from "eventsource-parser";
import { Stream } from "openai/streaming";
import { measure } from "./measure.mjs";

const packetSize = 16384; // What a socket typically hands over.
const bytes = readFileSync(process.argv[2]);

async function withOpenai() {
    const body = new ReadableStream({
        start(controller) {
            for (let i = 0; i < bytes.length; i += packetSize) {
                controller.enqueue(bytes.subarray(i, i + packetSize));
            }
            controller.close();
        },
    });
    let count = 0;
    for await (const chunk of Stream.fromSSEResponse(new Response(body), new AbortController())) {
        if (chunk.choices[0]?.delta?.content) {
            ++count;
        }
    }
    return count;
}

function withEventsourceParser() {
    let count = 0;
    const decoder = new TextDecoder();
    const parser = createParser({
        onEvent(event) {
            if (event.data !== "[DONE]" && JSON.parse(event.data).choices[0]?.delta?.content) {
                ++count;
            }
        },
    });
    for (let i = 0; i < bytes.length; i += packetSize) {
        parser.feed(decoder.decode(bytes.subarray(i, i + packetSize), { stream: true }));
    }
    return count;
}

const items = withEventsourceParser();
if (items === 0 || (await withOpenai()) !== items) {
    throw new Error("the peers do not agree on the number of deltas");
}
await measure("DecodeEventStream", "npm openai", items, withOpenai);
await measure("DecodeEventStream", "npm eventsource-parser", items, withEventsourceParser);
