((clipping) => {
    // Add the action code here.
    // The `clipping` object contains following properties:
    // {
    //     application: "The name of the application from where the clipping came from",
    //     plainText: "The clipboard content as plain text"
    // }
    // The return value can be a string or object with a `plainText` property or an array of either type.
    // If array contains multiple items they will be added as new clippings to the history.
    return clipping.plainText;
})
