// SPDX-License-Identifier: MIT

/** What an error says to a person. */
export function messageOf(error: unknown): string {
  return error instanceof Error ? error.message : String(error);
}
