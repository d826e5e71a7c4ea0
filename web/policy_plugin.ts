// SPDX-License-Identifier: MIT
// The security policy of the page in one file: its script is known by a hash, and there is nothing else to load.
import { createHash } from 'node:crypto';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import type { Plugin } from 'vite';

/** What the page in one file is called. */
export const singleFileName = 'morl.html';

/** The page with the hash of its script in its policy. */
export function withPolicy(html: string): string {
  const [, script = ''] = /<script type="module"[^>]*>([^]*?)<\/script>/.exec(html) ?? [];
  if (script.trim() === '') {
    throw new Error('the page has no script of its own');
  }
  const hash = createHash('sha256').update(script).digest('base64');
  return html
    .replace("script-src 'self'", () => `script-src 'sha256-${hash}'`)
    .replace("style-src 'self'", () => 'style-src')
    .replace("connect-src 'self'", () => 'connect-src data:')
    .replace("worker-src 'self'", () => 'worker-src blob:')
    .replace("img-src 'self'", () => 'img-src');
}

export function policyPlugin(): Plugin {
  return {
    name: 'morl-policy',
    // When the script is in the page.
    writeBundle({ dir = '.' }) {
      const path = join(dir, singleFileName);
      writeFileSync(path, withPolicy(readFileSync(path, 'utf8')));
    },
  };
}
