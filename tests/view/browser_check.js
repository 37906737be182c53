// SPDX-License-Identifier: Apache-2.0
// Loads each view in headless Chromium, as a person would open it: no console error or
// uncaught exception, no picture that fails to decode, every in-page link has its anchor,
// the page holds the texts expected in its language, and a screenshot is not blank. The
// browser is driven over the DevTools protocol on a pipe (--remote-debugging-pipe), which
// needs nothing beyond node itself.
//
//   node browser_check.js <chromium> <profile-dir> <screenshot-dir> <file.html>=<text>|<text>... ...
//
// The profile directory is Chromium's, fresh and empty; the caller removes it afterwards.
//
// Exit status 77 (skipped) when Chromium cannot be started here at all.
'use strict';
const fs = require('fs');
const path = require('path');
const zlib = require('zlib');
const { spawn } = require('child_process');

const [chromium, profile, screenshots, ...views] = process.argv.slice(2);
const flags = ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
    '--disable-background-networking', '--disable-component-update', '--disable-sync',
    `--user-data-dir=${profile}`, '--remote-debugging-pipe', 'about:blank'];
const browser = spawn(chromium, flags, { stdio: ['ignore', 'ignore', 'pipe', 'pipe', 'pipe'] });
let browserLog = '';
browser.stderr.on('data', (data) => { browserLog += data; });

// ---- The protocol: JSON messages ending in a NUL byte, out on fd 3, in on fd 4. ----------
let nextId = 1;
const pending = new Map();
const listeners = [];
let incoming = Buffer.alloc(0);
browser.stdio[4].on('data', (data) => {
    incoming = Buffer.concat([incoming, data]);
    for (let end; (end = incoming.indexOf(0)) >= 0; incoming = incoming.subarray(end + 1)) {
        const message = JSON.parse(incoming.subarray(0, end).toString('utf8'));
        const waiting = pending.get(message.id);
        if (waiting) {
            pending.delete(message.id);
            if (message.error) waiting.reject(new Error(JSON.stringify(message.error)));
            else waiting.resolve(message.result);
        } else {
            for (const listen of listeners) listen(message);
        }
    }
});
function send(method, params = {}, sessionId = undefined) {
    const id = nextId++;
    browser.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + '\0');
    return new Promise((resolve, reject) => pending.set(id, { resolve, reject }));
}
function nextEvent(method, sessionId) {
    return new Promise((resolve) => {
        const listen = (message) => {
            if (message.method !== method || message.sessionId !== sessionId) return;
            listeners.splice(listeners.indexOf(listen), 1);
            resolve(message.params);
        };
        listeners.push(listen);
    });
}
function within(seconds, promise, what) {
    let timer;
    const timeout = new Promise((_, reject) => { timer = setTimeout(() => reject(new Error(`${what}: no answer in ${seconds} s`)), seconds * 1000); });
    return Promise.race([promise, timeout]).finally(() => clearTimeout(timer));
}

// ---- A screenshot is blank when nearly all its pixels have the colour of the first. ------
function paintedShare(png) {
    let offset = 8, width = 0, height = 0, colourType = 0;
    const data = [];
    while (offset < png.length) {
        const length = png.readUInt32BE(offset);
        const type = png.toString('latin1', offset + 4, offset + 8);
        const body = png.subarray(offset + 8, offset + 8 + length);
        if (type === 'IHDR') {
            width = body.readUInt32BE(0);
            height = body.readUInt32BE(4);
            if (body[8] !== 8 || body[12] !== 0) throw new Error('screenshot: not an 8-bit, non-interlaced PNG');
            colourType = body[9];
        } else if (type === 'IDAT') {
            data.push(body);
        }
        offset += 12 + length;
    }
    const channels = { 2: 3, 6: 4 }[colourType];
    if (!channels) throw new Error(`screenshot: PNG colour type ${colourType}`);
    const raw = zlib.inflateSync(Buffer.concat(data));
    const stride = width * channels;
    const pixels = Buffer.alloc(stride * height);
    for (let y = 0; y < height; ++y) {  // undo the row filters
        const filter = raw[y * (stride + 1)];
        for (let x = 0; x < stride; ++x) {
            const value = raw[y * (stride + 1) + 1 + x];
            const left = x >= channels ? pixels[y * stride + x - channels] : 0;
            const up = y > 0 ? pixels[(y - 1) * stride + x] : 0;
            const upLeft = x >= channels && y > 0 ? pixels[(y - 1) * stride + x - channels] : 0;
            const p = left + up - upLeft;
            const [pa, pb, pc] = [Math.abs(p - left), Math.abs(p - up), Math.abs(p - upLeft)];
            const paeth = pa <= pb && pa <= pc ? left : pb <= pc ? up : upLeft;
            const predictor = [0, left, up, (left + up) >> 1, paeth][filter];
            pixels[y * stride + x] = (value + predictor) & 0xff;
        }
    }
    let painted = 0;
    for (let i = 0; i < pixels.length; i += channels)
        if (pixels.compare(pixels, i, i + channels, 0, channels) !== 0) ++painted;
    return painted / (width * height);
}

// What the page itself tells about its links, pictures and text.
const inspect = `(() => {
    const broken = [...document.querySelectorAll('a[href^="#"]')]
        .map((a) => decodeURIComponent(a.getAttribute('href').slice(1)))
        .filter((id) => !document.getElementById(id));
    const pictures = [...document.images].filter((img) => !img.complete || img.naturalWidth === 0).map((img) => img.alt);
    return { broken: broken.slice(0, 5), brokenCount: broken.length, pictures, text: document.body.innerText };
})()`;

async function check(sessionId, view) {
    const [file, expected] = view.split('=');
    const problems = [];
    const errors = [];
    const listen = (message) => {
        if (message.sessionId !== sessionId) return;
        if (message.method === 'Runtime.exceptionThrown') {
            const details = message.params.exceptionDetails;
            errors.push((details.exception && details.exception.description) || details.text);
        }
        if (message.method === 'Runtime.consoleAPICalled' && ['error', 'assert'].includes(message.params.type))
            errors.push(message.params.args.map((arg) => arg.value).join(' '));
        if (message.method === 'Log.entryAdded' && message.params.entry.level === 'error')
            errors.push(message.params.entry.text);
    };
    listeners.push(listen);
    const loaded = nextEvent('Page.loadEventFired', sessionId);
    await send('Page.navigate', { url: 'file://' + path.resolve(file) }, sessionId);
    await within(60, loaded, `loading ${file}`);
    const page = (await send('Runtime.evaluate', { expression: inspect, returnByValue: true }, sessionId)).result.value;
    const shot = await send('Page.captureScreenshot', { format: 'png' }, sessionId);
    listeners.splice(listeners.indexOf(listen), 1);

    const png = Buffer.from(shot.data, 'base64');
    fs.writeFileSync(path.join(screenshots, path.basename(file, '.html') + '.png'), png);
    const share = paintedShare(png);
    for (const error of errors) problems.push(`console: ${error}`);
    if (page.brokenCount) problems.push(`${page.brokenCount} links without anchor, e.g. #${page.broken.join(', #')}`);
    if (page.pictures.length) problems.push(`pictures that do not show: ${page.pictures.join(', ')}`);
    for (const text of expected ? expected.split('|') : [])
        if (!page.text.includes(text)) problems.push(`the page does not show "${text}"`);
    if (share < 0.01) problems.push(`the screenshot is blank (${(share * 100).toFixed(2)} % painted)`);
    console.log(`${problems.length ? 'FAIL' : 'ok  '} ${file}: ${page.text.length} characters, ${(share * 100).toFixed(1)} % painted`);
    for (const problem of problems) console.log(`     ${problem}`);
    return problems.length === 0;
}

async function main() {
    let targetId;
    try {
        ({ targetId } = await within(30, send('Target.createTarget', { url: 'about:blank' }), 'starting chromium'));
    } catch (error) {
        console.log(`chromium cannot run here: ${error.message}\n${browserLog.slice(-2000)}`);
        return 77;
    }
    const { sessionId } = await send('Target.attachToTarget', { targetId, flatten: true });
    for (const domain of ['Page', 'Runtime', 'Log']) await send(`${domain}.enable`, {}, sessionId);
    await send('Emulation.setDeviceMetricsOverride', { width: 1100, height: 1400, deviceScaleFactor: 1, mobile: false }, sessionId);
    let passed = true;
    for (const view of views) passed = (await check(sessionId, view)) && passed;
    const closed = new Promise((resolve) => browser.on('exit', resolve));
    await send('Browser.close').catch(() => {});
    await within(10, closed, 'closing chromium').catch(() => browser.kill());
    return passed ? 0 : 1;
}

browser.on('error', (error) => {
    console.log(`chromium cannot run here: ${error.message}`);
    process.exit(77);
});
main().then((status) => {
    browser.kill();
    process.exit(status);
}, (error) => {
    console.log(`FAIL: ${error.stack}\n${browserLog.slice(-2000)}`);
    browser.kill();
    process.exit(1);
});
