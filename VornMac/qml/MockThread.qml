import Vorn.View

/// A made-up conversation, to show what kind of thing is uploaded.
ChatCard {
    turns: Labels.exampleConversation
}
