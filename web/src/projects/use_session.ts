// SPDX-License-Identifier: MIT
import { createContext, useContext } from 'react';
import type { Session } from './session';

export const SessionContext = createContext<Session | null>(null);

export function useSession(): Session {
  const session = useContext(SessionContext);
  if (!session) {
    throw new Error('there is no session around this component');
  }
  return session;
}
