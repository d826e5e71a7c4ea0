// SPDX-License-Identifier: MIT

/** Offers a text as a file. */
export function download(name: string, text: string): void {
  const url = URL.createObjectURL(new Blob([text], { type: 'text/plain' }));
  const link = document.createElement('a');
  link.href = url;
  link.download = name;
  link.click();
  // The browser has taken the file by then.
  setTimeout(() => {
    URL.revokeObjectURL(url);
  }, 10_000);
}
