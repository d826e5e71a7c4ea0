// SPDX-License-Identifier: MIT
import { findNode, type Project } from '../src/model/project';

/** The id of the node of a name; empty if there is none. */
export function idOf(project: Project, name: string): string {
  return findNode(project, name)?.id ?? '';
}
