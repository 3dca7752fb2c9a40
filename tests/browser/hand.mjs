// A hand on a window that a browser shows. Every line of standard input is a command, a JSON array
// of its name and arguments, and is answered by one line, a JSON value.
//
// Usage: node hand.mjs BROWSER ADDRESS

import { createInterface } from "node:readline";
import { chromium } from "playwright-core";

const [executablePath, address] = process.argv.slice(2);
// Chromium's sandbox is not to be had as root.
const browser = await chromium.launch({ executablePath, args: ["--no-sandbox"] });
// Not the size of the program's screen, so that the page has to scale it.
const page = await browser.newPage({ viewport: { width: 1100, height: 720 } });
page.setDefaultTimeout(60_000);
await page.goto(address);
const screen = page.locator("#screen canvas");

// Where the point (x, y) of the program's screen is on the page.
async function onPage(x, y) {
  const box = await screen.boundingBox();
  const scale = box.width / (await screen.evaluate((canvas) => canvas.width));
  return [box.x + x * scale, box.y + y * scale];
}

const commands = {
  waitForScreen: () => page.locator("#message:empty").waitFor({ state: "attached" }),
  message: () => page.locator("#message").textContent(),
  click: async (x, y) => page.mouse.click(...(await onPage(x, y))),
  clickBesideScreen: () => page.mouse.click(1, 1),
  type: (text) => page.keyboard.type(text),
  press: (key) => page.keyboard.press(key),
  savePicture: async (path) => { await screen.screenshot({ path }); },
};

for await (const line of createInterface({ input: process.stdin })) {
  const [name, ...values] = JSON.parse(line);
  const answer = await commands[name](...values);
  console.log(JSON.stringify(answer ?? null));
}
await browser.close();
