// A hand and an eye on the supervisor's pages. Every line of standard input is a command, a JSON
// array of its name and arguments, and is answered by one line, a JSON value.
//
// Usage: node hand.mjs BROWSER ADDRESS

import { createRequire } from "node:module";
import { createInterface } from "node:readline";

const require = createRequire(new URL("../browser/package.json", import.meta.url));
const { chromium } = require("playwright-core");

const [executablePath, baseURL] = process.argv.slice(2);
// Chromium's sandbox is not to be had as root.
const browser = await chromium.launch({ executablePath, args: ["--no-sandbox"] });
const context = await browser.newContext({ baseURL, viewport: { width: 1280, height: 900 } });
const page = await context.newPage();
page.setDefaultTimeout(60_000);
const complaints = [];
page.on("console", (message) => message.type() === "error" && complaints.push(message.text()));
page.on("pageerror", (error) => complaints.push(error.message));

const field = page.getByRole("searchbox", { name: "Number or customer" });
const link = (name) => page.getByRole("link", { name, exact: true });

const commands = {
  open: async (path) => (await page.goto(path)).status(),
  address: () => page.url(),
  heading: () => page.getByRole("heading", { level: 1 }).innerText(),
  // What the cells of every row, but the head, of the table with that caption say.
  rows: (caption) =>
    page.getByRole("table", { name: caption }).locator("tbody tr").evaluateAll((rows) =>
      rows.map((row) => [...row.cells].map((cell) => cell.textContent))),
  says: (text) => page.getByText(text).isVisible(),
  updatedAt: () => page.locator("#updated time").innerText(),
  touchField: () => field.focus(),
  type: (text) => page.keyboard.type(text),
  press: (key) => page.keyboard.press(key),
  fieldText: () => field.inputValue(),
  fieldHasFocus: () => field.evaluate((input) => input === document.activeElement),
  focusLink: (name) => link(name).focus(),
  focusedText: () => page.evaluate(() => document.activeElement.textContent),
  follow: (name) => link(name).click(),
  overflow: async (width) => {
    await page.setViewportSize({ width, height: 700 });
    return page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
  },
  print: async (path) => { await page.pdf({ path, preferCSSPageSize: true }); },
  savePicture: async (path) => { await page.screenshot({ path, fullPage: true }); },
  complaints: () => complaints,
};

for await (const line of createInterface({ input: process.stdin })) {
  const [name, ...values] = JSON.parse(line);
  const answer = await commands[name](...values);
  console.log(JSON.stringify(answer ?? null));
}
await browser.close();
