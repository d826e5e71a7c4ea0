// SPDX-License-Identifier: MIT
import { useMemo } from 'react';
import { targets, type Message } from './compiler/protocol';
import { findNode } from './model/project';
import { remarksOn } from './model/remarks';
import { messagesOf, projectOf } from './model/store';
import { usePage, usePageStore } from './model/use_store';

function about(message: Message): string {
  const isAll = message.targets.length === targets.length || message.targets.length === 0;
  return isAll ? '' : message.targets.join(', ');
}

function MessageLine({ message }: { message: Message }) {
  const store = usePageStore();
  const place =
    message.node === '' ? '' : `${message.node}${message.line > 0 ? `:${message.line}` : ''}`;
  const go = (): void => {
    store.setState((state) => {
      const node = findNode(projectOf(state), message.node);
      const { line, column } = message;
      return node ? { selected: node.id, goTo: { node: node.name, line, column } } : {};
    });
  };
  return (
    <li className={message.severity}>
      <button onClick={go} disabled={place === ''}>
        <span className="severity">{message.severity}</span>
        {place !== '' && <span className="place">{place}</span>}
        <span className="text">{message.text}</span>
        {message.hint !== '' && <span className="hint">{message.hint}</span>}
        {message.check !== '' && <span className="muted">[{message.check}]</span>}
        <span className="muted">{about(message)}</span>
      </button>
    </li>
  );
}

/** Everything that is wrong; a line leads to its place. */
export function MessagesView() {
  const answer = usePage((state) => state.answer);
  const driverMessages = usePage((state) => state.driverMessages);
  const project = usePage(projectOf);
  const remarks = useMemo(() => remarksOn(project), [project]);
  const messages = [...messagesOf({ answer, driverMessages }), ...remarks];
  const failure = answer?.failure ?? '';
  return (
    <section className="panel messages" aria-label="Messages">
      <div className="bar" role="status">
        {failure !== '' ? <strong className="error">{failure}</strong> : headline(messages)}
      </div>
      <ul tabIndex={messages.length > 0 ? 0 : -1} aria-label="List of messages">
        {messages.map((message, i) => (
          <MessageLine key={i} message={message} />
        ))}
      </ul>
    </section>
  );
}

function headline(messages: readonly Message[]): string {
  const errors = messages.filter((message) => message.severity === 'error').length;
  const warnings = messages.length - errors;
  const count = (number: number, word: string): string =>
    `${number} ${word}${number === 1 ? '' : 's'}`;
  return messages.length === 0
    ? 'No faults, no warnings'
    : `${count(errors, 'error')}, ${count(warnings, 'warning')}`;
}
