// SPDX-License-Identifier: MIT
// Nodes that have a text file each. The page edits them as node files with one node.
import { Compiler, MorlError } from 'morl';
import { isSourcePath, nameOfSource, type NodeFile, type Project } from '../model/project';
import { FileError, nodeFilePaths } from './node_file';

/** What files hold, by path; null: there shall be no such file. */
export type FileTexts = Readonly<Record<string, string | null>>;

/** The folders of the node sources: each is named as the node file that it stands beside. */
export const sourceFolders = nodeFilePaths.map((path) => path.replace(/\.morl$/, ''));

/** Runs a function whose refusal becomes a message that names the file and the place. */
function readable<Value>(run: () => Value): Value {
  try {
    return run();
  } catch (error) {
    throw error instanceof MorlError ? new FileError(error.message) : error;
  }
}

/** The node sources among the texts of a folder. @throws FileError if one of them has faults */
export async function readSources(texts: Readonly<Record<string, string>>): Promise<NodeFile[]> {
  const sources = Object.entries(texts).filter(([path]) => isSourcePath(path));
  if (sources.length === 0) {
    return [];
  }
  const compiler = await Compiler.create();
  return sources.map(([path, source]) => {
    const text = readable(() => compiler.sourceToNodes(path, nameOfSource(path), source));
    return { path, text, source };
  });
}

/** What the files shall hold: the texts of a project's files, sources in their own form. */
export async function fileTexts(
  project: Project,
  texts: Readonly<Record<string, string>>,
): Promise<FileTexts> {
  const sources = project.files.filter(({ path }) => isSourcePath(path));
  const compiler = sources.length > 0 ? await Compiler.create() : null;
  const textOf = ({ path, text, source }: NodeFile): string | null => {
    const node = project.nodes.find(({ file }) => file === path);
    const edited = texts[path];
    if (!compiler || !node || edited === undefined) {
      return null;
    }
    if (edited === text && typeof source === 'string') {
      return source;
    }
    return readable(() => compiler.nodesToSource(path, edited, node.name !== nameOfSource(path)));
  };
  return { ...texts, ...Object.fromEntries(sources.map((file) => [file.path, textOf(file)])) };
}
