// SPDX-License-Identifier: MIT

/** Offers a text, or something else, as a file. */
export function download(name: string, content: string | Blob): void {
  const blob = typeof content === 'string' ? new Blob([content], { type: 'text/plain' }) : content;
  const url = URL.createObjectURL(blob);
  const link = document.createElement('a');
  link.href = url;
  link.download = name;
  link.click();
  // The browser has taken the file by then.
  setTimeout(() => {
    URL.revokeObjectURL(url);
  }, 10_000);
}
