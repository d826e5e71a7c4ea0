// SPDX-License-Identifier: MIT
// Opens the built page: both the page and its worker compile, under its content security policy.
import assert from "node:assert/strict";
import { chromium } from "playwright-core";
import { preview } from "vite";

const server = await preview({ preview: { host: "127.0.0.1", port: 0 } });
const browser = await chromium.launch({
  executablePath: "/usr/bin/chromium",
  args: ["--no-sandbox", "--disable-background-networking"],
});
try {
  const page = await browser.newPage();
  const messages = [];
  page.on("console", (message) => messages.push(message.text()));
  page.on("pageerror", (error) => messages.push(String(error)));
  await page.goto(server.resolvedUrls.local[0]);
  const texts = [];
  for (const id of ["page", "worker"]) {
    await page.waitForFunction((name) => document.getElementById(name).textContent !== "", id);
    texts.push(await page.textContent(`#${id}`));
  }
  assert.match(texts[0], /void main\(\)/);
  assert.match(texts[0], /broken\.json:1$/);
  assert.equal(texts[1], texts[0]);
  assert.deepEqual(messages, []);
  console.log("a page and a worker have compiled");
} finally {
  await browser.close();
  await server.close();
}
