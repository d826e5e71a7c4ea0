#version 100
precision highp int; 
precision highp float; 
varying vec3 oWorldPos;
varying vec3 oNormal;
varying vec2 oClipDepth;
void main(){ 
	vec3 ioWorldPos = oWorldPos;
	vec3 ioNormal = oNormal;
	vec2 ioClipDepth = oClipDepth;
	vec4 retoColor = vec4(1.0);
	float depth = ioClipDepth.x/ioClipDepth.y;
	retoColor = vec4(depth,depth,depth,1.0);
	gl_FragColor = retoColor; 
}
