"use strict";

// What comes from a Mac or an archive is put into the page as text, never as HTML.
const byId = (id) => document.getElementById(id);

function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name in element) element[name] = value;
    else element.setAttribute(name, value);
  }
  element.append(...children.filter((child) => child !== null));
  return element;
}

// Ignores a second press while the first is under way. Disabling the button would lose the focus.
function button(text, label, kind, action) {
  let busy = false;
  return make("button", { type: "button", className: kind, "aria-label": label,
    onclick: async () => {
      if (busy) return;
      busy = true;
      await attempt(action);
      busy = false;
    } }, text);
}

async function attempt(action) {
  try {
    await action();
    hideProblems();
  } catch (error) {
    showProblem(error.message);
  }
}

// What is behind an open dialog is neither seen nor read aloud.
function showProblem(message) {
  hideProblems();
  const place = byId(byId("reader").open ? "reader-problem" : "problem");
  place.querySelector("p").textContent = message;
  place.hidden = false;
  // The message must not cover the focused element.
  if (document.activeElement !== document.body) document.activeElement?.scrollIntoView({ block: "nearest" });
}

function hideProblems() {
  for (const place of document.querySelectorAll(".problem")) place.hidden = true;
}

async function ask(path, body) {
  const answer = await fetch("/phone/" + path, body === undefined ? {} : {
    method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) })
    .catch(() => { throw new Error("The sandbox does not answer."); });
  const content = await answer.json().catch(() => ({}));
  if (!answer.ok) throw new Error(content.message || "The service answered " + answer.status + ".");
  return content;
}

// Cards

function linkCard(link, view) {
  const device = [link.osVersion, "Vorn " + link.appVersion].filter(Boolean).join(" · ");
  const expires = make("span", { className: "soft time", "data-until": link.expiresAt });
  const head = make("div", { className: "row between" }, make("h3", {}, link.deviceName), expires);
  if (link.status === "pending") {
    return [head, make("p", { className: "soft" }, device + " shows a code."),
      button("Scan code", "Scan code of " + link.deviceName, "", () => ask(`links/${link.id}/scan`, {}))];
  }
  const account = make("select", { "aria-label": "Account for " + link.deviceName },
    ...view.users.map((user) => make("option", { value: user.id }, user.name)));
  return [head, make("p", {}, "Link this Mac to your account?"), make("p", { className: "soft" }, device),
    view.users.length > 1 ? account : null,
    make("div", { className: "row actions" },
      button("Link this Mac", "Link this Mac: " + link.deviceName, "",
        () => ask(`links/${link.id}/approve`, { userId: account.value })),
      button("Decline", "Decline " + link.deviceName, "quiet", () => ask(`links/${link.id}/reject`, {})))];
}

const statusWords = {
  uploading: ["Uploading", "wait"], analyzing: ["Analyzing", "wait"], review_pending: ["In review", "wait"],
  approved: ["Approved", "good"], rejected: ["Rejected", "bad"], expired: ["Expired", "bad"], aborted: ["Aborted", ""],
};

function bytes(count) {
  if (count < 1000) return count + " bytes";
  const unit = count < 1e6 ? ["kB", 1e3] : ["MB", 1e6];
  return (count / unit[1]).toFixed(1) + " " + unit[0];
}

const dateAndTime = { dateStyle: "medium", timeStyle: "short" };

const time = (milliseconds) => new Date(milliseconds).toLocaleString(undefined, dateAndTime);

const words = (key) => key.replaceAll("_", " ");

// A small number of parts is shown one by one: they may arrive in any order.
function partsProgress(submission) {
  const there = submission.receivedParts.length;
  const name = `Upload ${submission.attempt}: parts received`;
  const cells = submission.partCount <= 200
    ? make("div", { className: "parts", "aria-hidden": "true" }) : null;
  if (cells) {
    const received = new Set(submission.receivedParts);
    for (let part = 1; part <= submission.partCount; part++) {
      cells.append(make("i", { className: received.has(part) ? "there" : "" }));
    }
  }
  const bar = make("progress", { className: cells ? "unseen" : "", max: submission.partCount, value: there,
    "aria-label": name });
  return [cells, bar, make("p", { className: "soft" }, `${there} of ${submission.partCount} parts`)];
}

// What a review does when nobody presses a button.
const endings = { approved: "approves", rejected: "rejects", expired: "expires" };

function reviewWords(review) {
  if (review.by === "button") return "Every review waits for your decision.";
  const ending = review.by === "archive" ? "decides from what the archive holds" : endings[review.ending];
  const reason = review.reason ? ` (${words(review.reason)})` : "";
  return `The sandbox ${ending} every upload by itself${reason}, unless you are faster.`;
}

function decisionTime(submission) {
  if (!submission.decidesAt) return null;
  return make("p", { className: "soft" }, "Decides by itself · ",
    make("span", { className: "time", "data-until": submission.decidesAt }));
}

function reviewButtons(submission, view) {
  const end = (outcome) => () => ask(`submissions/${submission.id}/outcome`, { outcome });
  const named = (verb) => `${verb} upload ${submission.attempt} of ${submission.userName}`;
  const reason = make("select", { "aria-label": named("Reason to reject") },
    ...view.reasons.map((key) => make("option", { value: key }, words(key))));
  return [decisionTime(submission), make("div", { className: "row actions" },
    button("Approve", named("Approve"), "good", end("approved")),
    button("Expire", named("Expire"), "quiet", end("expired"))),
  make("div", { className: "row" }, reason,
    button("Reject", named("Reject"), "danger", () => end("rejected:" + reason.value)()))];
}

function submissionCard(submission, view) {
  const [status, kind] = statusWords[submission.status] || [submission.status, ""];
  const which = `Upload ${submission.attempt} of ${submission.userName}`;
  const card = [
    make("div", { className: "row between" },
      make("h3", {}, "Upload " + submission.attempt), make("span", { className: "chip " + kind }, status)),
    make("p", { className: "soft" }, `${submission.userName} · ${bytes(submission.sizeBytes)} · `
      + time(submission.createdAt))];
  if (submission.status === "uploading") card.push(...partsProgress(submission));
  if (submission.status === "approved") {
    card.push(make("p", { className: "reward" }, "+ $" + submission.rewardUsd.toFixed(2)));
  }
  if (submission.reason) card.push(make("p", {}, "Reason: " + words(submission.reason)));
  if (submission.finding) card.push(make("p", { className: "soft" }, "In the archive: " + submission.finding));
  if (submission.inReview) card.push(...reviewButtons(submission, view));
  if (submission.hasArchive) {
    card.push(button("Show messages", "Show messages of " + which, "quiet", () => openReader(submission.id, which)));
  }
  return card;
}

// Unchanged cards are kept, with their focus and selections.
const shown = new Map();

function showCards(holder, items, view, build) {
  const cards = items.map((item) => {
    const text = JSON.stringify([item, view.users, view.reasons]);
    const old = shown.get(item.id);
    if (old && old.text === text) return old.card;
    const card = make("article", { className: "card" }, ...build(item, view).filter((part) => part !== null));
    if (old) keepChoices(old.card, card);
    if (old) keepFocus(old.card, card);
    shown.set(item.id, { text, card });
    return card;
  });
  for (const card of [...holder.children]) if (!cards.includes(card)) card.remove();
  cards.forEach((card, at) => { if (holder.children[at] !== card) holder.insertBefore(card, holder.children[at] || null); });
}

function keepChoices(old, card) {
  for (const select of card.querySelectorAll("select")) {
    const same = [...old.querySelectorAll("select")]
      .find((item) => item.getAttribute("aria-label") === select.getAttribute("aria-label"));
    if (same && [...select.options].some((option) => option.value === same.value)) select.value = same.value;
  }
}

function keepFocus(old, card) {
  const label = old.contains(document.activeElement) ? document.activeElement.getAttribute("aria-label") : null;
  if (!label) return;
  const same = [...card.querySelectorAll("[aria-label]")].find((item) => item.getAttribute("aria-label") === label);
  queueMicrotask(() => (same || card.querySelector("button"))?.focus());
}

function show(view) {
  showCards(byId("links"), view.links, view, linkCard);
  showCards(byId("submissions"), view.submissions, view, submissionCard);
  byId("macs").replaceChildren(...view.macs.map((mac) => make("li", {}, make("span", {}, mac.deviceName),
    make("span", { className: "soft" }, mac.userName))));
  byId("review").textContent = reviewWords(view.review);
  for (const name of ["links", "submissions", "macs"]) byId("no-" + name).hidden = view[name].length > 0;
  countDown();
}

function countDown() {
  for (const place of document.querySelectorAll("[data-until]")) {
    const seconds = Math.max(0, Math.ceil((Number(place.dataset.until) - Date.now()) / 1000));
    place.textContent = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, "0")} left`;
  }
}

// Messages

const reader = { submission: "", page: 0 };

async function openReader(submission, which) {
  reader.submission = submission;
  byId("reader-title").textContent = which;
  await showPage(0);
  byId("reader").showModal();
}

async function showPage(page) {
  const content = await ask(`submissions/${reader.submission}/messages?page=${page}`);
  const pages = Math.max(1, Math.ceil(content.count / content.perPage));
  reader.page = page;
  const exported = Date.parse(text(content.manifest?.exportedAt));
  byId("reader-summary").textContent = `${content.count} ${content.count === 1 ? "message" : "messages"} · exported `
    + (Number.isNaN(exported) ? "at an unknown time" : time(exported));
  byId("messages").replaceChildren(...content.messages.map(messageItem));
  byId("messages").scrollTop = 0;
  if (content.count === 0) byId("messages").append(make("li", { className: "none" }, "There are no messages in it."));
  byId("page").textContent = `Page ${page + 1} of ${pages}`;
  byId("previous").disabled = page === 0;
  byId("next").disabled = page + 1 >= pages;
}

// An archive may hold anything: values of a wrong type are left out.
const text = (value) => typeof value === "string" ? value : "";
const list = (value) => Array.isArray(value) ? value : [];

function messageItem(message) {
  if (typeof message !== "object" || message === null || Array.isArray(message)) {
    return make("li", { className: "none" }, "Not a message: " + JSON.stringify(message).slice(0, 100));
  }
  const sent = typeof message.sentAt === "number" ? time(message.sentAt * 1000) : "at an unknown time";
  const about = [message.fromMe === true ? "You" : "Nimbrel", sent];
  if (message.edited === true) about.push("edited");
  for (const link of list(message.links)) about.push(text(link?.url));
  const files = list(message.attachments).map((attachment) => text(attachment?.mimeType) || "unknown type");
  return make("li", { className: message.fromMe === true ? "mine" : "theirs" },
    text(message.text) ? make("p", { className: "bubble" }, message.text) : null,
    files.length ? make("p", { className: "bubble file" }, "Attachment: " + files.join(", ")) : null,
    make("p", { className: "soft" }, about.filter(Boolean).join(" · ")));
}

// Live

function watch() {
  const events = new EventSource("/phone/events");
  events.onopen = () => showConnection("Connected to the sandbox", "good");
  events.onmessage = (event) => show(JSON.parse(event.data));
  events.onerror = () => {
    showConnection("The sandbox does not answer", "bad");
    if (events.readyState === EventSource.CLOSED) setTimeout(watch, 2000);
  };
}

function showConnection(state, kind) {
  byId("connection").textContent = state;
  byId("connection").className = kind;
}

for (const place of document.querySelectorAll(".problem")) place.querySelector("button").onclick = hideProblems;
byId("reader").onclose = hideProblems;
byId("reader-close").onclick = () => byId("reader").close();
byId("previous").onclick = () => attempt(() => showPage(reader.page - 1));
byId("next").onclick = () => attempt(() => showPage(reader.page + 1));
byId("code-form").onsubmit = (event) => {
  event.preventDefault();
  attempt(async () => {
    await ask("links/scan", { qrPayload: byId("code").value.trim() });
    byId("code").value = "";
  });
};
setInterval(countDown, 1000);
watch();
