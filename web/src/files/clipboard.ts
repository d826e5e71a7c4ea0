// SPDX-License-Identifier: MIT

/** Copies a text. Returns whether the browser lets this page do so. */
export async function copyText(text: string): Promise<boolean> {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    return false; // not allowed, or a page without a secure connection
  }
}
