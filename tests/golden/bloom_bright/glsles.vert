#version 100
precision highp int; 
precision highp float; 
attribute vec3 position;
attribute vec2 uv;
varying vec2 oUV;
void main(){ 
	vec3 iposition = position;
	vec2 iuv = uv;
	vec4 retoProjPos = vec4(1.0);
	vec2 retoUV = vec2(1.0);
	retoProjPos = vec4(iposition,1.0);
	retoUV = iuv;
	gl_Position = retoProjPos; 
	oUV = retoUV; 
}
